#include "app/logo_sound.h"

namespace sonavel {

namespace {

constexpr const char* kFileName = "logo.wav";

}  // namespace

LogoSound::LogoSound(WaveDevices& devices, const ProgramFolder& folder)
    : player_(prompts_, progress_, devices) {
    const auto wave = folder.Path() / kFileName;
    std::error_code ignored;
    const bool own = std::filesystem::exists(wave, ignored);
    player_.Open(own ? wave : ProgramFolder::ShippedFolder() / kFileName, WavOpenMode::kReadAll);
}

void LogoSound::Play() {
    player_.Play(0);
}

}  // namespace sonavel
