#include "platform/headless/wave_sink.h"

#include <array>
#include <string_view>
#include <utility>

namespace sonavel {
namespace {

constexpr std::uint32_t kHeaderBytes = 44;
constexpr std::uint32_t kPcmTag = 1;
constexpr std::uint32_t kFloatTag = 3;

class HeaderWriter {
  public:
    void Tag(std::string_view tag) {
        for (const char letter : tag) bytes_[size_++] = letter;
    }
    void Number(std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i) bytes_[size_++] = static_cast<char>(value >> 8 * i);
    }
    void WriteTo(std::ofstream& file) const { file.write(bytes_.data(), bytes_.size()); }

  private:
    std::array<char, kHeaderBytes> bytes_{};
    std::size_t size_ = 0;
};

}  // namespace

WavFileSink::WavFileSink(std::filesystem::path path) : path_(std::move(path)) {}

bool WavFileSink::Begin(const WaveFormat& format) {
    format_ = format;
    dataBytes_ = 0;
    file_.open(path_, std::ios::binary | std::ios::trunc);
    WriteHeader();
    return file_.good();
}

void WavFileSink::Take(std::span<const std::uint8_t> bytes) {
    file_.write(reinterpret_cast<const char*>(bytes.data()),
                static_cast<std::streamsize>(bytes.size()));
    dataBytes_ += static_cast<std::uint32_t>(bytes.size());
}

void WavFileSink::End() {
    file_.seekp(0);
    WriteHeader();
    file_.close();
}

void WavFileSink::WriteHeader() {
    HeaderWriter header;
    header.Tag("RIFF");
    header.Number(kHeaderBytes - 8 + dataBytes_, 4);
    header.Tag("WAVEfmt ");
    header.Number(16, 4);
    header.Number(format_.bitsPerSample == 32 ? kFloatTag : kPcmTag, 2);
    header.Number(format_.channels, 2);
    header.Number(format_.samplesPerSecond, 4);
    header.Number(format_.samplesPerSecond * format_.BlockAlign(), 4);
    header.Number(format_.BlockAlign(), 2);
    header.Number(format_.bitsPerSample, 2);
    header.Tag("data");
    header.Number(dataBytes_, 4);
    header.WriteTo(file_);
}

}  // namespace sonavel
