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
      workspace_({prompts_, progress_, clipboard_, devices_, folder_, &codecs_,
                  UndoStorage::OfThisSystem()}) {
    workspace_.SetInitialViewSize(kInitialViewWidth, kInitialViewHeight);
}

std::filesystem::path AbsolutePath(const std::string& word) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(word, error);
    return error ? std::filesystem::path(word) : path.lexically_normal();
}

}  // namespace sonavel::batch
