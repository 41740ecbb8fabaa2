// Labels as texts: exact files, the way back, and what is wrong with a file.
#include "exchange/label_files.h"

#include <gtest/gtest.h>

#include "support/test_files.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kRate = 44100;

using Labels = std::vector<SoundChapter>;

Labels Read(LabelFormat format, std::string_view text) {
    Result<Labels> labels = ReadLabels(format, text, kRate);
    EXPECT_TRUE(labels) << labels.Reason() << '\n' << text;
    return labels ? *std::move(labels) : Labels{};
}

const Labels kThreeLabels = {
    {0, 0, "Start"}, {44100, 22050, "a, \"b\" & <c>"}, {2646000 * 61ull + 588, 0, "\xED\x95\x9C"}};

TEST(LabelFilesTest, WritesEachFormatToTheLetter) {
    const LabelledSound sound{kRate, "a \"b\".wav"};
    EXPECT_EQ(WriteLabels(LabelFormat::kLabelTrack, kThreeLabels, sound),
              "0.000000\t0.000000\tStart\n"
              "1.000000\t1.500000\ta, \"b\" & <c>\n"
              "3660.013333\t3660.013333\t\xED\x95\x9C\n");
    EXPECT_EQ(WriteLabels(LabelFormat::kTable, kThreeLabels, sound),
              "name,start,end\n"
              "Start,0.000000,0.000000\n"
              "\"a, \"\"b\"\" & <c>\",1.000000,1.500000\n"
              "\xED\x95\x9C,3660.013333,3660.013333\n");
    EXPECT_EQ(WriteLabels(LabelFormat::kCaptions, kThreeLabels, sound),
              "WEBVTT\n\n"
              "00:00:00.000 --> 00:00:00.001\nStart\n\n"
              "00:00:01.000 --> 00:00:01.500\na, \"b\" &amp; &lt;c&gt;\n\n"
              "01:01:00.013 --> 01:01:00.014\n\xED\x95\x9C\n\n");
    EXPECT_EQ(WriteLabels(LabelFormat::kCueSheet, kThreeLabels, sound),
              "FILE \"a 'b'.wav\" WAVE\n"
              "  TRACK 01 AUDIO\n    TITLE \"Start\"\n    INDEX 01 00:00:00\n"
              "  TRACK 02 AUDIO\n    TITLE \"a, 'b' & <c>\"\n    INDEX 01 00:01:00\n"
              "  TRACK 03 AUDIO\n    TITLE \"\xED\x95\x9C\"\n    INDEX 01 61:00:01\n");
}

TEST(LabelFilesTest, WhatIsWrittenComesBack) {
    for (const LabelFormat format : {LabelFormat::kLabelTrack, LabelFormat::kTable})
        EXPECT_EQ(Read(format, WriteLabels(format, kThreeLabels, {kRate, ""})), kThreeLabels);
    Labels captions = kThreeLabels;
    captions[2].startFrame = 2646000 * 61ull + 573;  // 13 ms
    EXPECT_EQ(Read(LabelFormat::kCaptions,
                   WriteLabels(LabelFormat::kCaptions, kThreeLabels, {kRate, ""})),
              captions);
    Labels cues = kThreeLabels;
    cues[1] = {44100, 0, "a, 'b' & <c>"};
    EXPECT_EQ(Read(LabelFormat::kCueSheet,
                   WriteLabels(LabelFormat::kCueSheet, kThreeLabels, {kRate, ""})),
              cues);
}

TEST(LabelFilesTest, ReadsWhatOtherProgramsWrite) {
    const struct {
        const char* what;
        LabelFormat format;
        std::string_view text;
        Labels labels;
    } cases[] = {
        {"frequencies of a label, CR LF, no order",
         LabelFormat::kLabelTrack,
         "2,0\t3,0\tb\r\n\\\t100.0\t200.0\r\n1.0\t1.0\ta\tb\r\n\r\n",
         {{44100, 0, "a\tb"}, {88200, 44100, "b"}}},
        {"a byte order mark, and no end",
         LabelFormat::kLabelTrack,
         "\xEF\xBB\xBF"
         "1.0\t",
         {{44100, 0, ""}}},
        {"columns in another order, a line break in a name",
         LabelFormat::kTable,
         "start,note,name\r\n1.0,x,\"two\nlines\"\r\n2.0,,\n",
         {{44100, 0, "two\nlines"}, {88200, 0, ""}}},
        {"notes, styles, tags, places, no hours",
         LabelFormat::kCaptions,
         "WEBVTT - made here\nKind: chapters\n\nNOTE\n00:09.000 --> 00:10.000\n\nSTYLE\n::cue{}\n\n"
         "first\n00:01.000 --> 00:02.000 line:0\n<v Ann>Hi</v> &amp; <i>ho</i>\nthere\n",
         {{44100, 44100, "Hi & ho there"}}},
        {"the gap before a track, a title behind its index",
         LabelFormat::kCueSheet,
         "REM GENRE x\nTITLE \"All\"\nFILE x WAVE\nTRACK 01 AUDIO\nINDEX 00 00:00:00\n"
         "INDEX 01 00:02:00\nTITLE One\nINDEX 02 00:03:00\nTRACK 02 AUDIO\nINDEX 01 100:00:00",
         {{88200, 0, "One"}, {264600000, 0, "Track 02"}}},
    };
    for (const auto& one : cases) EXPECT_EQ(Read(one.format, one.text), one.labels) << one.what;
}

TEST(LabelFilesTest, NamesTheLineThatIsWrong) {
    const struct {
        LabelFormat format;
        std::string_view text;
        std::string_view reason;
    } cases[] = {
        {LabelFormat::kLabelTrack, "1\t2\ta\nhello", "Line 2: "},
        {LabelFormat::kLabelTrack, "2\t1\tbackwards", "Line 1: "},
        {LabelFormat::kLabelTrack, "-1\t1\tbefore the start", "Line 1: "},
        {LabelFormat::kLabelTrack, "1e300\t1e300\tfar", "Line 1: "},
        {LabelFormat::kLabelTrack, "nan\tinf\tnone", "Line 1: "},
        {LabelFormat::kLabelTrack, "99999999999\t99999999999\tfar", "Line 1: "},
        {LabelFormat::kTable, "", "Line 1: "},
        {LabelFormat::kTable, "a,b,c\n", "Line 1: "},
        {LabelFormat::kTable, "name,start,end\n\"x\ny\",1,2\nz,q,2", "Line 4: "},
        {LabelFormat::kTable, "name,start,end\n\"never closed,1,2\n", "Line 2: "},
        {LabelFormat::kCaptions, "00:01.000 --> 00:02.000", "Line 1: expected WEBVTT."},
        {LabelFormat::kCaptions, "WEBVTT\n\n00:61:00.000 --> 01:00:00.000\nx", "Line 3: "},
        {LabelFormat::kCaptions, "WEBVTT\n\n00:02.000 --> 00:01.000\nx", "Line 3: "},
        {LabelFormat::kCueSheet, "TRACK 01 AUDIO\nINDEX 01 00:00:75", "Line 2: "},
        {LabelFormat::kCueSheet, "INDEX 01 00:00:00", "Line 1: "},
        {LabelFormat::kCueSheet, "FILE a WAVE\nFILE b WAVE", "Line 2: "},
    };
    for (const auto& one : cases) {
        const auto labels = ReadLabels(one.format, one.text, kRate);
        EXPECT_FALSE(labels) << one.text;
        EXPECT_TRUE(labels.Reason().starts_with(one.reason)) << labels.Reason() << '\n' << one.text;
    }
}

TEST(LabelFilesTest, FilesGoByTheirExtension) {
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteLabelFile(folder / "a.CSV", kThreeLabels, {kRate, ""}));
    EXPECT_EQ(*ReadLabelFile(folder / "a.CSV", kRate), kThreeLabels);
    EXPECT_FALSE(WriteLabelFile(folder / "a.srt", kThreeLabels, {kRate, ""}));
    EXPECT_FALSE(ReadLabelFile(folder / "none.txt", kRate));
    EXPECT_EQ(folder.FileCount(), 1u);
}

}  // namespace
}  // namespace sonavel
