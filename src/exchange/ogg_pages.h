// The pages of an Ogg file and the packets in them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "exchange/random_bytes.h"

namespace sonavel {

struct OggPage {
    std::uint8_t flags = 0;
    std::uint64_t granule = 0;
    std::uint32_t stream = 0;
    std::uint64_t contentOffset = 0;
    std::vector<std::uint8_t> lengths;  // of the pieces of its content

    std::uint64_t ContentBytes() const;
    std::uint64_t End() const { return contentOffset + ContentBytes(); }
};

// Nothing where no page begins or its head is cut.
std::optional<OggPage> OggPageAt(RandomBytes& bytes, std::uint64_t offset);

// The page with that number in its stream, its checksum and its content, which is as long as the
// lengths say. Where it lies does not count.
std::vector<std::uint8_t> OggPageBytes(const OggPage& page, std::uint32_t number,
                                       std::span<const std::uint8_t> content);

// Hands out the packets of the first stream of an Ogg file.
class OggPackets {
  public:
    explicit OggPackets(RandomBytes& bytes) : bytes_(bytes) {}

    // The next packet, at most 16 MiB of it; nothing when there is none or the pages are torn.
    std::optional<std::vector<std::uint8_t>> Next();
    // Where the page behind the last packet begins; nothing where its own page goes on.
    std::optional<std::uint64_t> PageBehind() const;

  private:
    bool TurnPage();

    RandomBytes& bytes_;
    std::optional<OggPage> page_;
    std::size_t piece_ = 0;      // of the page
    std::uint64_t content_ = 0;  // where it lies
};

}  // namespace sonavel
