// What people are told of the failures that many operations share.
#pragma once

#include <string_view>

namespace sonavel::failure {

inline constexpr std::string_view kMemory = "Memory Allocation Failure.";
inline constexpr std::string_view kOpenFile = "File Open Failure.";
inline constexpr std::string_view kReadData = "Read Data Failure.";
inline constexpr std::string_view kWriteData = "Write Data Failure.";
inline constexpr std::string_view kCancelled = "Cancelled.";
inline constexpr std::string_view kNotOffered = "This command is not offered just now.";

}  // namespace sonavel::failure
