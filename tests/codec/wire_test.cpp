// The records on the pipe: what is packed is parsed, and nothing else is.
#include <random>

#include "codec/wire_values.h"
#include "gtest/gtest.h"

namespace sonavel::wire {
namespace {

SoundFileDescription Description() {
    SoundFileDescription of;
    of.kind = SoundFileKind::kFlac;
    of.format = "FLAC";
    of.coding = "x";
    of.depth = FileDepth::kInteger;
    of.bits = 24;
    of.rate = 96000;
    of.channels = 2;
    of.counted = FrameCount::kStated;
    of.frames = 0x1'2345'6789;
    of.samples = FrameSamples::kFloat32;
    of.speakers = {Speaker::kFrontLeft, Speaker::kFrontRight};
    return of;
}

TEST(Wire, WhatIsPackedIsParsed) {
    EXPECT_EQ(ParseDescription(Pack(Description())), Description());
    const SoundTag tag{"title", std::string("a\0b\xFF", 4)};
    EXPECT_EQ(ParseTag(Pack(tag)), tag);
    const SoundChapter chapter{1ull << 40, 5, "One"};
    EXPECT_EQ(ParseChapter(Pack(chapter)), chapter);
    const auto end = ParseEnd(Pack(DecodedSound{1ull << 33, 7, SoundCondition::kCutShort, 9}));
    ASSERT_TRUE(end);
    EXPECT_EQ(end->frames, 1ull << 33);
    EXPECT_EQ(end->promisedFrames, 7u);
    EXPECT_EQ(end->condition, SoundCondition::kCutShort);
    EXPECT_EQ(end->silencedSamples, 9u);
    const auto failure = ParseFailure(Pack(Failure{FailureCode::kMemory, "why"}));
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, FailureCode::kMemory);
    EXPECT_EQ(failure->text, "why");
    EncodeRequest request;
    request.kind = SoundFileKind::kOpus;
    request.depth = EncodedDepth::k24;
    request.quality = 9;
    request.rate = 48000;
    request.channels = 6;
    request.frames = 1ull << 35;
    request.samples = FrameSamples::kUnsigned8;
    const auto parsed = ParseRequest(Pack(request));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(Pack(*parsed), Pack(request));
    EXPECT_EQ(parsed->frames, request.frames);
}

// Bytes in the order of the numbers' weight, so that both sides may be of any make.
TEST(Wire, NumbersAreLittleEndian) {
    EXPECT_EQ(Greeting(), (Bytes{'S', 'N', 'V', 'C', 1, 0, 0, 0}));
    EXPECT_EQ(Pack(RecordHead{RecordType::kFrames, 0x1234}), (Bytes{4, 0, 0, 0, 0x34, 0x12, 0, 0}));
}

TEST(Wire, APieceOfARecordOrMoreThanOneIsNothing) {
    const Bytes whole = Pack(Description());
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(ParseDescription(std::span(whole).first(size))) << size;
    Bytes longer = whole;
    longer.push_back(0);
    EXPECT_FALSE(ParseDescription(longer));
}

TEST(Wire, LimitsAreHeld) {
    const auto changed = [](auto change) {
        SoundFileDescription of = Description();
        change(of);
        return ParseDescription(Pack(of)).has_value();
    };
    using D = SoundFileDescription;
    EXPECT_TRUE(changed([](D& of) { of.speakers.clear(); }));
    EXPECT_FALSE(changed([](D& of) { of.speakers.pop_back(); }));
    EXPECT_FALSE(changed([](D& of) { of.channels = 0; }));
    EXPECT_FALSE(changed([](D& of) { of.rate = 0; }));
    EXPECT_FALSE(changed([](D& of) { of.rate = kMostRate + 1; }));
    EXPECT_FALSE(changed([](D& of) { of.bits = 65; }));
    EXPECT_FALSE(changed([](D& of) { of.frames = kMostFrames + 1; }));
    EXPECT_FALSE(changed([](D& of) { of.samples = static_cast<FrameSamples>(3); }));
    EXPECT_FALSE(changed([](D& of) {
        of.speakers.clear();
        of.channels = kMostChannels + 1;
    }));
    for (const std::uint32_t type : {0u, 9u, 0xFFFFFFFFu})
        EXPECT_FALSE(ParseHead(Packer().U32(type).U32(0).Done()));
    const auto frames = static_cast<std::uint32_t>(RecordType::kFrames);
    EXPECT_TRUE(ParseHead(Packer().U32(frames).U32(kMostFrameBytes).Done()));
    EXPECT_FALSE(ParseHead(Packer().U32(frames).U32(kMostFrameBytes + 1).Done()));
    // A text that is cut on its way goes with the length that it then has.
    const auto tag = ParseTag(Pack(SoundTag{"k", std::string(kMostTagBytes + 1, 'v')}));
    ASSERT_TRUE(tag);
    EXPECT_EQ(tag->value.size(), kMostTagBytes);
}

// Whatever comes over the pipe, a parsed value lies within its limits.
TEST(Wire, NoiseGivesNothingImpossible) {
    std::mt19937 random(1);
    const Bytes whole = Pack(Description());
    int parsed = 0;
    for (int i = 0; i < 20000; ++i) {
        Bytes bytes = whole;
        for (unsigned n = 1 + random() % 4; n > 0; --n)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        const auto of = ParseDescription(bytes);
        if (!of) continue;
        ++parsed;
        ASSERT_TRUE(of->channels > 0 && of->channels <= kMostChannels);
        ASSERT_TRUE(of->rate > 0 && of->rate <= kMostRate);
        ASSERT_LE(of->frames, kMostFrames);
        ASSERT_GT(of->BytesPerFrame(), 0u);
        ASSERT_LE(of->samples, FrameSamples::kFloat32);
        ASSERT_TRUE(of->speakers.empty() || of->speakers.size() == of->channels);
    }
    EXPECT_GT(parsed, 100);
}

}  // namespace
}  // namespace sonavel::wire
