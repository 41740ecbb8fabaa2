// The records that the codec program sends, each checked before anything is made of it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "codec/client/watched_child.h"
#include "codec/wire_values.h"

namespace sonavel {

class RecordStream {
  public:
    RecordStream(WatchedChild& child, CodecWork work) : child_(child), work_(work) {}

    // The head of the next record, whose content one of the two below then takes. Not done: why
    // there is none.
    Result<wire::RecordHead> Next();
    Outcome TakeContent() { return TakeContent({}); }
    // Into `room` when that is as large as the content.
    Outcome TakeContent(std::span<std::uint8_t> room);
    // What was taken last, aligned for samples of any kind.
    std::span<std::uint8_t> Content() const { return content_; }
    // What came makes no sense: ends the child and says so.
    Outcome Nonsense();

  private:
    Outcome Greet();
    Outcome Fetch(std::span<std::uint8_t> to);

    WatchedChild& child_;
    CodecWork work_;
    bool greeted_ = false;
    std::size_t bytes_ = 0;  // of the record whose head came last
    std::vector<std::uint8_t> own_;
    std::span<std::uint8_t> content_;
};

// The sentence for a failure that the codec program reports.
Outcome OutcomeOf(const wire::Failure& failure, CodecWork work);

}  // namespace sonavel
