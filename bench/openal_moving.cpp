// The comparison for moving sources: OpenAL Soft's renderer, which moves a mono sound around the
// listener with head-related responses and without a device. Usage: openal_moving IN OUT SECONDS;
// IN is 16-bit mono at 44.1 kHz without a head, OUT 16-bit stereo.
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numbers>
#include <vector>

namespace {

constexpr int kRate = 44100;
constexpr int kFramesPerPlace = 512;

template <class Function>
Function Extension(const char* name) {
    const auto found = reinterpret_cast<Function>(alcGetProcAddress(nullptr, name));
    if (found) return found;
    std::fprintf(stderr, "openal_moving: no %s\n", name);
    std::exit(1);
}

std::vector<std::int16_t> ReadSamples(const char* path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::vector<std::int16_t> samples(
        file ? static_cast<std::size_t>(file.tellg()) / sizeof(std::int16_t) : 0);
    file.seekg(0);
    file.read(reinterpret_cast<char*>(samples.data()),
              static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
    return samples;
}

ALCdevice* OpenWithResponses() {
    ALCdevice* const device =
        Extension<LPALCLOOPBACKOPENDEVICESOFT>("alcLoopbackOpenDeviceSOFT")(nullptr);
    const ALCint wanted[] = {ALC_FORMAT_CHANNELS_SOFT,
                             ALC_STEREO_SOFT,
                             ALC_FORMAT_TYPE_SOFT,
                             ALC_SHORT_SOFT,
                             ALC_FREQUENCY,
                             kRate,
                             ALC_HRTF_SOFT,
                             ALC_TRUE,
                             0};
    alcMakeContextCurrent(alcCreateContext(device, wanted));
    ALCint responses = ALC_FALSE;
    alcGetIntegerv(device, ALC_HRTF_SOFT, 1, &responses);
    if (responses) return device;
    std::fputs("openal_moving: no head-related responses\n", stderr);
    std::exit(1);
}

ALuint SourceOf(const std::vector<std::int16_t>& samples) {
    ALuint buffer = 0;
    ALuint source = 0;
    alGenBuffers(1, &buffer);
    alBufferData(buffer, AL_FORMAT_MONO16, samples.data(),
                 static_cast<ALsizei>(samples.size() * sizeof(std::int16_t)), kRate);
    alGenSources(1, &source);
    alSourcei(source, AL_BUFFER, static_cast<ALint>(buffer));
    return source;
}

}  // namespace

int main(int count, char** words) {
    if (count != 4) return 2;
    const std::vector<std::int16_t> samples = ReadSamples(words[1]);
    const double secondsPerTurn = std::strtod(words[3], nullptr);
    ALCdevice* const device = OpenWithResponses();
    const auto render = Extension<LPALCRENDERSAMPLESSOFT>("alcRenderSamplesSOFT");
    const ALuint source = SourceOf(samples);
    alSourcePlay(source);
    std::ofstream out(words[2], std::ios::binary);
    std::vector<std::int16_t> rendered(std::size_t{2} * kFramesPerPlace);
    for (std::size_t frame = 0; frame < samples.size(); frame += kFramesPerPlace) {
        const double angle =
            2 * std::numbers::pi * static_cast<double>(frame) / kRate / secondsPerTurn;
        alSource3f(source, AL_POSITION, static_cast<float>(std::sin(angle)), 0,
                   static_cast<float>(-std::cos(angle)));
        render(device, rendered.data(), kFramesPerPlace);
        out.write(reinterpret_cast<const char*>(rendered.data()),
                  static_cast<std::streamsize>(rendered.size() * sizeof(std::int16_t)));
    }
    ALCcontext* const context = alcGetCurrentContext();
    alcMakeContextCurrent(nullptr);
    alcDestroyContext(context);
    alcCloseDevice(device);
    return out ? 0 : 1;
}
