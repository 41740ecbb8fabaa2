#include "man_pages/pages.h"

#include "batch/command_row.h"
#include "batch/help_text.h"
#include "man_pages/roff_page.h"

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
    for (const batch::HelpGroup& group : batch::HelpGroups()) {
        page.Subsection(group.title);
        for (const batch::CommandRow& row : group.rows())
            page.Entry(batch::SignatureOf(row), row.does);
    }
    page.Section("Exit status").Paragraph(batch::ExitStatusText());
    page.Section("Examples").Lines(kExample);
    page.Section("See also").Paragraph("sonavel(1)");
    return page.Text();
}

}  // namespace sonavel
