// Whole runs of the tool against files of a temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "batch/batch_call.h"
#include "support/sound_files.h"

namespace sonavel::batch {

struct ToolResult {
    int status = 0;
    std::string out;
    std::string errors;
};

class BatchToolTest : public ::testing::Test {
  protected:
    BatchToolTest() {
        Write("Options.ini",
              "[__SOUND_GENERAL_OPTIONS]\nSAVE UNDO REDO INFOMATION=1\n마커 저장=1\n");
    }

    void Write(const char* name, std::string_view bytes) const {
        WriteFileBytes(folder_ / name, BytesOf(bytes));
    }

    // A mono 16-bit WAV file at 8000 Hz whose samples are 1, 2, 3, ...
    void WriteRamp(const char* name, int frames) const {
        WavParts parts;
        ByteBuilder data;
        for (int i = 1; i <= frames; ++i) data.Little16(static_cast<unsigned>(i));
        parts.data = data.Bytes();
        WriteFileBytes(folder_ / name, WavBytes(parts));
    }

    // "@" in a script or in what was printed stands for the temporary folder.
    ToolResult Call(std::vector<std::string> words, const std::string& input = "") const {
        for (std::string& word : words) Replace(word, "@", folder_.Path().string());
        std::istringstream in(input);
        std::ostringstream out, errors;
        const int status = RunBatchTool(words, {in, out, errors});
        ToolResult result{status, out.str(), errors.str()};
        Replace(result.out, folder_.Path().string(), "@");
        Replace(result.errors, folder_.Path().string(), "@");
        return result;
    }

    ToolResult Run(const std::string& script) const {
        return Call({"--folder", folder_.Path().string(), "-c", script});
    }

    void ExpectOutput(const std::string& script, const std::string& expected) const {
        const ToolResult result = Run(script);
        EXPECT_EQ(result.out, expected) << script;
        EXPECT_EQ(result.errors, "") << script;
        EXPECT_EQ(result.status, 0) << script;
    }

    // Of each line what lies from one text to the other.
    static std::string PartOfEachLine(const std::string& text, const char* from, const char* to) {
        std::string parts;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            const std::string part = line.substr(line.find(from));
            parts += part.substr(0, part.find(to)) + '\n';
        }
        return parts;
    }

    TemporaryFolder folder_;

  private:
    static void Replace(std::string& text, const std::string& from, const std::string& to) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
            text.replace(at, from.size(), to);
            at += to.size();
        }
    }
};

}  // namespace sonavel::batch
