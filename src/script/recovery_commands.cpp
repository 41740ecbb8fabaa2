// The command that lists and opens what programs before left unsaved.
#include <ostream>
#include <system_error>

#include "script/command_rows.h"
#include "script/report_text.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

constexpr std::int64_t kHighestNumber = 0x7FFFFFFF;

Outcome List(ScriptSession& session, const std::filesystem::path& folder) {
    std::size_t number = 0;
    for (const recovery::LeftWork& work : session.ListLeftIn(folder))
        session.Out() << "left " << ++number << " title=" << QuotedText(work.title)
                      << " path=" << QuotedText(work.path.native()) << " frames=" << work.frames
                      << " edits=" << work.edits << '\n';
    return Done();
}

Outcome OpenLeft(ScriptSession& session, const std::filesystem::path& folder, std::int64_t number) {
    const std::vector<recovery::LeftWork>& left = session.LeftIn(folder);
    if (number > static_cast<std::int64_t>(left.size()))
        return Failed("Nothing was left there under the number " + std::to_string(number) + ".");
    session.Keeper();
    return session.Sounds().RecoverDocument(left[static_cast<std::size_t>(number - 1)]);
}

Outcome Recover(ScriptSession& session, const Arguments& words) {
    const std::filesystem::path folder = session.PathOf(words.Text("DIR"));
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return Failed('"' + folder.string() + "\" is not a folder.");
    if (words.Has("N")) return OpenLeft(session, folder, words.Whole("N"));
    return List(session, folder);
}

}  // namespace

std::vector<CommandRow> RecoveryCommandRows() {
    return {
        {.name = "recover",
         .does = "List the unsaved work that was left in DIR, or open the N-th of it",
         .positional = {{"DIR", ValueRule::Path()}, {"N", ValueRule::Whole(1, kHighestNumber)}},
         .firstOptional = 1,
         .needs = Needs::kNothing,
         .inEditor = InEditor::kRefused,
         .run = Recover},
    };
}

}  // namespace sonavel::script
