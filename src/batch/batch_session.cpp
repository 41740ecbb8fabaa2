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

void BatchSession::KeepWorkIn(const std::filesystem::path& folder) {
    keeper_ =
        std::make_unique<recovery::WorkKeeper>(folder, recovery::WorkKeeper::Keeping::kChanges);
    workspace_.SetKeeper(keeper_.get());
}

recovery::WorkKeeper& BatchSession::Keeper() {
    if (!keeper_) {
        keeper_ = std::make_unique<recovery::WorkKeeper>(folder_.Path(),
                                                         recovery::WorkKeeper::Keeping::kHeldOnly);
        workspace_.SetKeeper(keeper_.get());
    }
    return *keeper_;
}

const std::vector<recovery::LeftWork>& BatchSession::LeftIn(const std::filesystem::path& folder) {
    const auto listed = left_.find(folder);
    return listed != left_.end() ? listed->second : ListLeftIn(folder);
}

const std::vector<recovery::LeftWork>& BatchSession::ListLeftIn(
    const std::filesystem::path& folder) {
    return left_[folder] = recovery::ListLeftWork(folder);
}

std::filesystem::path AbsolutePath(const std::string& word) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(word, error);
    return error ? std::filesystem::path(word) : path.lexically_normal();
}

}  // namespace sonavel::batch
