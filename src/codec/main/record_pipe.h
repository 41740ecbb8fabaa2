// The two ends of the pipe to the editor, as the codec program holds them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "codec/wire_values.h"

namespace sonavel {

// Greets when it is made. Once the editor is gone nothing more is written and IsGood() is false.
class RecordOutput {
  public:
    explicit RecordOutput(int descriptor);

    void Send(wire::RecordType type, std::span<const std::uint8_t> content);
    // Frames in memory of whole pages that stays as it is until WaitUntilRead(Sent()) has come
    // back: a pipe then takes them without copying.
    void SendLasting(std::span<const std::uint8_t> frames);
    std::uint64_t Sent() const { return sent_; }  // bytes
    void WaitUntilRead(std::uint64_t sent);
    void SendFailure(wire::FailureCode code, std::string_view text);
    bool IsGood() const { return good_; }

  private:
    bool Splice(std::span<const std::uint8_t> bytes);

    int descriptor_;
    bool good_ = true;
    bool splices_ = true;  // until the system refuses it
    std::uint64_t sent_ = 0;
};

// Records from the editor. A pipe that ends within one, or a head that makes no sense, is the end.
class RecordInput {
  public:
    explicit RecordInput(int descriptor) : descriptor_(descriptor) {}

    bool TakeGreeting();
    // The type of the next record, whose content is then in Content() and aligned for samples.
    std::optional<wire::RecordType> Next();
    std::span<const std::uint8_t> Content() const { return {content_.data(), bytes_}; }

  private:
    bool ReadAll(std::span<std::uint8_t> to);

    int descriptor_;
    std::vector<std::uint8_t> content_;
    std::size_t bytes_ = 0;
};

}  // namespace sonavel
