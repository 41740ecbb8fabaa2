#include "batch/batch_session.h"

#include <system_error>

namespace sonavel::batch {

BatchSession::BatchSession(const ProgramFolder& folder, std::ostream& out,
                           std::ostream* progressOut)
    : out_(out),
      folder_(folder),
      prompts_(out),
      progress_(progressOut),
      devices_(WavePace::kAsFastAsAsked),
      workspace_({prompts_, progress_, clipboard_, devices_, folder_}, dialogs_, dialogs_) {
    workspace_.SetInitialViewSize(kInitialViewWidth, kInitialViewHeight);
}

void BatchSession::PrepareCommand() {
    dialogs_.Words() = {};
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        workspace_.At(i).document->SetLastError("");
        workspace_.At(i).view->ClearError();
    }
}

Outcome BatchSession::OutcomeOf(bool done) {
    if (done) return Done();
    for (const std::string* reason : {&View().LastError(), &Document().LastError()})
        if (!reason->empty()) return Failed(*reason);
    return Failed("The command could not be carried out.");
}

std::filesystem::path AbsolutePath(const std::string& word) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(word, error);
    return error ? std::filesystem::path(word) : path.lexically_normal();
}

}  // namespace sonavel::batch
