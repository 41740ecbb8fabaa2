#include "platform/available_memory.h"

#include <sys/resource.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace sonavel {
namespace {

std::string TextOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::optional<std::uint64_t> NumberIn(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    return number;
}

std::uint64_t Left(std::uint64_t limit, std::uint64_t used) {
    return limit > used ? limit - used : 0;
}

// "max", where there is no limit, is no number.
std::uint64_t LeftInControlGroup() {
    const std::string groups = TextOf("/proc/self/cgroup");
    const std::size_t at = groups.find("0::");
    if (at == std::string::npos) return UINT64_MAX;
    const std::size_t end = std::min(groups.find('\n', at), groups.size());
    const std::string folder = "/sys/fs/cgroup" + groups.substr(at + 3, end - at - 3) + '/';
    const auto limit = NumberIn(TextOf(folder + "memory.max"));
    const auto used = NumberIn(TextOf(folder + "memory.current"));
    return limit && used ? Left(*limit, *used) : UINT64_MAX;
}

std::uint64_t LeftOfAddressSpace() {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return UINT64_MAX;
    return Left(limit.rlim_cur, BytesOfLine(TextOf("/proc/self/status"), "VmSize:"));
}

}  // namespace

std::uint64_t BytesOfLine(std::string_view text, std::string_view name) {
    const std::size_t at = text.find(name);
    if (at == std::string_view::npos || (at > 0 && text[at - 1] != '\n')) return 0;
    return NumberIn(text.substr(at + name.size())).value_or(0) * 1024;
}

std::uint64_t AvailableMemory() {
    return std::min({BytesOfLine(TextOf("/proc/meminfo"), "MemAvailable:"), LeftInControlGroup(),
                     LeftOfAddressSpace()});
}

}  // namespace sonavel
