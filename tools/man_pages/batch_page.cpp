#include "man_pages/pages.h"

#include "batch/help_text.h"
#include "man_pages/roff_page.h"
#include "script/command_rows.h"

namespace sonavel {
namespace {

constexpr const char* kExample =
    "sonavel-batch -c 'open \"talk.wav\"; select 0 44100; delete; save \"shorter.wav\"'";

}  // namespace

std::string BatchPage(const std::string& version) {
    RoffPage page("sonavel-batch", version, "edit sounds from a script");
    page.Section("Synopsis").Lines(batch::UsageText());
    page.Section("Description").Paragraph(batch::GrammarText());
    page.Section("Commands");
    for (const script::CommandGroup& group : script::CommandGroups()) {
        page.Subsection(group.title);
        for (const script::CommandRow& row : group.rows())
            page.Entry(script::SignatureOf(row), row.does);
    }
    page.Section("Exit status").Paragraph(batch::ExitStatusText());
    page.Section("Examples").Lines(kExample);
    page.Section("See also").Paragraph("sonavel(1)");
    return page.Text();
}

}  // namespace sonavel
