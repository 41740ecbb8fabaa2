// Titles of documents that no file has named yet: a prefix and a number. The application owns one
// object for its whole life and hands it to whoever makes documents.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace sonavel {

namespace untitled_prefix {
inline constexpr std::string_view kPaste = "Paste_";
inline constexpr std::string_view kRecorder = "Recorder_";
inline constexpr std::string_view kSystemSound = "System_Sound_";
inline constexpr std::string_view kUserSound = "User_Sound_";
}  // namespace untitled_prefix

class UntitledTitles {
  public:
    // The prefix and the next number of that prefix, from 1: "Recorder_1", "Recorder_2", "Paste_1".
    std::string Next(std::string_view prefix);

  private:
    std::map<std::string, int, std::less<>> counters_;
};

}  // namespace sonavel
