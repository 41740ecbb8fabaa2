// What a block of samples has lent and others still read, so that the block can say so before it
// changes or moves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sonavel {

class LentSamples;

// Where bytes lie, or lay: the memory may be gone.
struct BytePlace {
    const std::uint8_t* data = nullptr;
    std::size_t bytes = 0;

    std::uintptr_t Start() const { return reinterpret_cast<std::uintptr_t>(data); }
};
inline BytePlace PlaceOf(std::span<const std::uint8_t> bytes) {
    return {bytes.data(), bytes.size()};
}
inline bool Touch(const BytePlace& one, const BytePlace& other) {
    return one.Start() < other.Start() + other.bytes && other.Start() < one.Start() + one.bytes;
}
inline bool LiesIn(const BytePlace& inner, const BytePlace& outer) {
    return inner.Start() >= outer.Start() &&
           inner.Start() + inner.bytes <= outer.Start() + outer.bytes;
}

// All of it on the thread that owns the block.
class Loans {
  public:
    // A second time changes nothing. False when there is no memory for one more.
    bool Add(const std::shared_ptr<LentSamples>& lent);
    // Waits until whatever touches the place is copied. It may be changed then.
    void SettleAt(const BytePlace& place);
    // Likewise of whatever lies in the place only in part.
    void SettleAcross(const BytePlace& place);
    // Lets the other know of all that this one has lent. False without memory.
    bool ShareWith(Loans& other) const;
    // What lies in the place has been copied to `copy`, which lends it from now on; pieces that lie
    // in it only in part stay, and without memory all.
    void GoOver(const BytePlace& place, const std::uint8_t* copy, Loans& other);

  private:
    friend class HeldLoans;

    struct Loan {
        std::weak_ptr<LentSamples> lent;
        std::shared_ptr<LentSamples> held{};
    };

    void Hold();
    void Release();
    void ForgetEnded();

    std::vector<Loan> loans_;
};

// While it lives, nobody reads what was lent, and it may be moved.
class HeldLoans {
  public:
    explicit HeldLoans(Loans& loans) : loans_(loans) { loans_.Hold(); }
    ~HeldLoans() { loans_.Release(); }
    HeldLoans(const HeldLoans&) = delete;
    HeldLoans& operator=(const HeldLoans&) = delete;

    void Moved(const BytePlace& from, const std::uint8_t* to) const;

  private:
    Loans& loans_;
};

}  // namespace sonavel
