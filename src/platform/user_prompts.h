// The questions and messages that the engine puts to the person. The desktop program shows boxes,
// the batch tool prints and answers from a queue. All texts are UTF-8.
#pragma once

#include <optional>
#include <string_view>

namespace sonavel {

// Which channel a mono/stereo conversion keeps or fills; the values are those of the
// conversions' mode numbers.
enum class ChannelChoice { kLeft = 0, kRight = 1, kBothOrMix = 2 };

// The direction of the conversion that is asked for.
enum class ChannelConversion { kMonoToStereo, kStereoToMono };

enum class ChangedFileAnswer { kOverwrite, kSaveAs, kCancel };
inline constexpr std::string_view kChangedFileQuestion =
    "The file was changed by another program. Overwrite, Save As, Cancel";

class UserPrompts {
  public:
    virtual ~UserPrompts() = default;

    // A message box with OK only.
    virtual void ShowMessage(std::string_view text) = 0;
    // A short note in the status bar, for failures that have no box of their own.
    virtual void ShowStatus(std::string_view text) = 0;
    // True for OK, false for Cancel.
    virtual bool AskOkCancel(std::string_view text, std::string_view caption) = 0;
    // True for Yes, false for No.
    virtual bool AskYesNo(std::string_view text, std::string_view caption) = 0;
    // Before a save over a file that is not as the document left it. Who cannot ask for another
    // name does not offer it.
    virtual ChangedFileAnswer AskChangedFile() {
        return AskOkCancel(kChangedFileQuestion, "Save") ? ChangedFileAnswer::kOverwrite
                                                         : ChangedFileAnswer::kCancel;
    }
    // The dialog "Convert Channel Type"; nothing when it was cancelled.
    virtual std::optional<ChannelChoice> AskChannelConversion(ChannelConversion conversion) = 0;
};

}  // namespace sonavel
