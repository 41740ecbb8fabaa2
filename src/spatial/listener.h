// Whose ears are listened with: the responses of the table, or of a person's own file, in the form
// that moves without steps, at the rates that were asked for.
#pragma once

#include <map>
#include <memory>

#include "spatial/response_bank.h"

namespace sonavel {

class Listener {
  public:
    Listener();

    // The table's name, or the file's.
    const MeasuredResponses& Measured() const { return measured_; }
    // Fails, and keeps what it has, when no set can be made of them; likewise cancelled when the
    // watch stops it.
    Outcome Use(MeasuredResponses measured, const PieceWatch& watch = Unwatched);
    void UseTable();
    bool UsesTable() const { return usesTable_; }

    // At this rate, in frames a second; whoever has it may keep it. Fails without memory.
    Result<std::shared_ptr<ResponseBank>> At(double rate);

  private:
    struct AtRate {
        std::shared_ptr<const ResponseSet> responses;
        std::shared_ptr<ResponseBank> bank;
    };

    MeasuredResponses measured_;
    bool usesTable_ = true;
    std::map<double, AtRate> rates_;
};

}  // namespace sonavel
