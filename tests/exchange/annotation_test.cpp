// What AU files hold of tags, written and read back.
#include <gmock/gmock.h>

#include "exchange/au_annotation.h"
#include "exchange/file_frame.h"
#include "exchange_files.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

FileBytes AuWith(const std::vector<SoundTag>& tags) {
    EncodeRequest request{.kind = SoundFileKind::kAu, .rate = 8000, .channels = 1, .tags = {}};
    SoundExtras extras;
    extras.tags = tags;
    return FrameAu(request, extras)->before;
}

TEST(AuAnnotation, TagsComeBackAsTheyWereWritten) {
    const std::vector<SoundTag> tags = {{"title", "A=B"},
                                        {"comment", "one\ndate=two\n three"},
                                        {"track", "3"},
                                        {"artist", "W\xC3\xBCrfel"}};
    EXPECT_EQ(ExtrasOf(AuWith(tags)).tags, tags);
    EXPECT_THAT(ExtrasOf(AuWith({})).tags, IsEmpty());
    EXPECT_THAT(ExtrasOf(AuWith({{"no=key", "x"}})).tags, IsEmpty());
}

TEST(AuAnnotation, OfOtherPrograms) {
    const auto read = [](std::string_view text) {
        ExtrasKeeper keeper;
        AddAnnotation(text, keeper);
        return TagTexts(keeper.Take());
    };
    EXPECT_THAT(read("Recorded in the rain"), ElementsAre("comment=Recorded in the rain"));
    EXPECT_THAT(read("Title=T\nTRACKNUMBER=2\nplain"), ElementsAre("title=T", "track=2\nplain"));
    EXPECT_THAT(read("=x"), ElementsAre("comment==x"));
}

TEST(AuAnnotation, IsReadWithinTheFile) {
    FileBytes cut = AuWith({{"title", "long enough"}});
    cut.resize(30);
    EXPECT_THAT(TagTexts(ExtrasOf(cut)), IsEmpty());
    cut = AuWith({{"title", "long enough"}});
    cut[4] = 0x7F;
    EXPECT_THAT(ExtrasOf(cut).remarks.missing,
                ElementsAre("A chunk of more than 1 MiB is left out."));
}

}  // namespace
}  // namespace sonavel
