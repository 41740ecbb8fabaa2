#include "sound/riff.h"

#include <gtest/gtest.h>

#include "support/sound_files.h"

namespace sonavel {
namespace {

FourCc Code(const char (&text)[5]) {
    return MakeFourCc(text);
}

class RiffTest : public testing::Test {
  protected:
    // A reader that has descended into the form of these bytes.
    void Enter(const FileBytes& bytes) {
        bytes_ = bytes;
        source_ = std::make_unique<MemorySource>(bytes_);
        reader_ = std::make_unique<RiffReader>(*source_);
        form_ = reader_->DescendForm(kRiffChunk, kWaveForm);
    }

    FileBytes bytes_;
    std::unique_ptr<MemorySource> source_;
    std::unique_ptr<RiffReader> reader_;
    std::optional<RiffChunk> form_;
};

TEST_F(RiffTest, SkipsPadBytesAndOtherChunks) {
    Enter(RiffBytes(RiffChunkBytes("odd1", {1, 2, 3}) + RiffChunkBytes("even", {1, 2}) +
                    RiffChunkBytes("want", {9, 8, 7})));
    ASSERT_TRUE(form_);
    const auto chunk = reader_->Descend(Code("want"), *form_);
    ASSERT_TRUE(chunk);
    EXPECT_EQ(chunk->sizeBytes, 3u);
    std::uint8_t content[3];
    ASSERT_TRUE(reader_->Cursor().ReadAll(content));
    EXPECT_EQ(content[0], 9);
    reader_->Ascend(*chunk);
    EXPECT_EQ(reader_->Cursor().Position(), bytes_.size());
    EXPECT_FALSE(reader_->Descend(Code("even"), *form_)) << "searches run forward only";
}

TEST_F(RiffTest, FindsTheFormBehindOthers) {
    Enter(RiffChunkBytes("junk", {1}) + RiffChunkBytes("RIFF", BytesOf("AVI ")) + RiffBytes({}));
    ASSERT_TRUE(form_);
    EXPECT_EQ(form_->dataOffset, 30u);
    Enter(RiffChunkBytes("RIFF", BytesOf("AVI ")));
    EXPECT_FALSE(form_);
    Enter({});
    EXPECT_FALSE(form_);
}

TEST_F(RiffTest, KeepsToTheParentUnlessAskedNotTo) {
    Enter(RiffBytes(RiffChunkBytes("in  ", {})) + RiffChunkBytes("out ", {}) +
          RiffChunkBytes("LIST", BytesOf("INFO")) + RiffChunkBytes("LIST", BytesOf("adtl")));
    ASSERT_TRUE(form_);
    EXPECT_FALSE(reader_->Descend(Code("out "), *form_));
    const auto list = reader_->DescendForm(kListChunk, kAssociatedDataForm);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->dataOffset, bytes_.size() - 4);
}

TEST_F(RiffTest, SizesThatLieEndTheSearch) {
    for (const std::uint32_t size : {0x7FFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
        const FileBytes lying = ByteBuilder().Text("liar").Little32(size).Bytes();
        Enter(RiffBytes(lying + RiffChunkBytes("want", {})));
        ASSERT_TRUE(form_);
        EXPECT_FALSE(reader_->Descend(Code("want"), *form_)) << size;
    }
}

}  // namespace
}  // namespace sonavel
