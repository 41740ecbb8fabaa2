// How an operation that can fail ends, as a value: Outcome where it yields nothing else, Result<T>
// where it yields a T.
#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/failure_texts.h"

namespace sonavel {

// Done, cancelled by the person, or failed for a reason that the person is told. Whatever did not
// end as done has left everything as it was.
class [[nodiscard]] Outcome {
  public:
    bool IsDone() const { return end_ == End::kDone; }
    bool IsCancelled() const { return end_ == End::kCancelled; }
    bool IsFailed() const { return end_ == End::kFailed || IsQuiet(); }
    // A failure that is told in the status bar and has no message box of its own.
    bool IsQuiet() const { return end_ == End::kFailedQuietly; }
    explicit operator bool() const { return IsDone(); }

    // Why nothing came about, one sentence for the person; empty when done.
    const std::string& Reason() const { return reason_; }

    bool operator==(const Outcome&) const = default;

  private:
    enum class End { kDone, kCancelled, kFailed, kFailedQuietly };

    Outcome(End end, std::string_view reason) : end_(end), reason_(reason) {}
    friend Outcome Done();
    friend Outcome Cancelled();
    friend Outcome Failed(std::string_view reason);
    friend Outcome FailedQuietly(std::string_view reason);

    End end_;
    std::string reason_;
};

inline Outcome Done() {
    return {Outcome::End::kDone, {}};
}
inline Outcome Cancelled() {
    return {Outcome::End::kCancelled, failure::kCancelled};
}
inline Outcome Failed(std::string_view reason) {
    return {Outcome::End::kFailed, reason};
}
inline Outcome FailedQuietly(std::string_view reason) {
    return {Outcome::End::kFailedQuietly, reason};
}

// For a step that says no more than whether it came about.
inline Outcome DoneIf(bool came, std::string_view reasonOtherwise) {
    return came ? Done() : Failed(reasonOtherwise);
}

// A value, or why there is none.
template <class T>
class [[nodiscard]] Result {
  public:
    // Both convert, so that a function ends with `return value;` or `return Failed(...);`.
    Result(T value) : value_(std::move(value)), outcome_(Done()) {}
    Result(Outcome why) : outcome_(std::move(why)) { assert(!outcome_.IsDone()); }

    explicit operator bool() const { return value_.has_value(); }
    T& operator*() & { return *value_; }
    const T& operator*() const& { return *value_; }
    T&& operator*() && { return *std::move(value_); }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }

    // Done when there is a value.
    const Outcome& Ended() const { return outcome_; }
    const std::string& Reason() const { return outcome_.Reason(); }

  private:
    std::optional<T> value_;
    Outcome outcome_;
};

}  // namespace sonavel
