#include "script/script_session.h"

#include <system_error>

namespace sonavel::script {

ScriptSession::ScriptSession(const HostServices& services, const ScriptHost& host)
    : host_(host), workspace_(services) {
    workspace_.SetInitialViewSize(kInitialViewWidth, kInitialViewHeight);
}

void ScriptSession::KeepWorkIn(const std::filesystem::path& folder) {
    keeper_ =
        std::make_unique<recovery::WorkKeeper>(folder, recovery::WorkKeeper::Keeping::kChanges);
    workspace_.SetKeeper(keeper_.get());
}

recovery::WorkKeeper& ScriptSession::Keeper() {
    if (!keeper_) {
        keeper_ = std::make_unique<recovery::WorkKeeper>(workspace_.Services().folder.Path(),
                                                         recovery::WorkKeeper::Keeping::kHeldOnly);
        workspace_.SetKeeper(keeper_.get());
    }
    return *keeper_;
}

const std::vector<recovery::LeftWork>& ScriptSession::LeftIn(const std::filesystem::path& folder) {
    const auto listed = left_.find(folder);
    return listed != left_.end() ? listed->second : ListLeftIn(folder);
}

const std::vector<recovery::LeftWork>& ScriptSession::ListLeftIn(
    const std::filesystem::path& folder) {
    return left_[folder] = recovery::ListLeftWork(folder);
}

std::filesystem::path ScriptSession::PathOf(const std::string& word) const {
    return AbsolutePath(host_.folder / word);
}

std::filesystem::path AbsolutePath(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal();
}

}  // namespace sonavel::script
