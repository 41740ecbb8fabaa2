#include "app/call/editor_call.h"
#include "man_pages/pages.h"
#include "man_pages/roff_page.h"

namespace sonavel {
namespace {

constexpr const char* kDescription =
    "Sonavel shows every sound as a waveform in a window of its own, plays any part of it, cuts, "
    "copies, pastes and mixes it, keeps named markers, records, applies effects that can be heard "
    "before, and places sounds in space for headphones.\n\n"
    "Where the editor runs already on the same display, a later call hands its files to it and "
    "ends. The manual is in the program, under Help.";

constexpr const char* kSettings =
    "Options.ini, Display.ini and what else a person sets lie in $XDG_CONFIG_HOME/sonavel, which "
    "is ~/.config/sonavel where the variable is not set. They are copied there at the first start.";

}  // namespace

std::string EditorPage(const std::string& version) {
    RoffPage page("sonavel", version, "edit sounds in a window");
    page.Section("Synopsis").Lines("sonavel [OPTION]... [FILE]...");
    page.Section("Description").Paragraph(kDescription).Paragraph(FilesHelp());
    page.Section("Options");
    for (const EditorOption& option : EditorOptions()) {
        const std::string letter = option.letter.empty() ? "" : std::string(option.letter) + ", ";
        page.Entry(letter + std::string(option.name), option.does);
    }
    page.Section("Exit status")
        .Paragraph(
            "0 after an ordinary end, 1 where nothing that was named can be opened or no "
            "display is found, 2 for a mistake in the call.");
    page.Section("Files").Paragraph(kSettings);
    page.Section("See also").Paragraph("sonavel-batch(1)");
    return page.Text();
}

}  // namespace sonavel
