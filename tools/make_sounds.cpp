// Makes the sounds that the project ships: a short piece for samples/ with quiet and loud passages
// and named markers, and the chime of the logo window. Usage: make_sounds SAMPLE.wav LOGO.wav
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "platform/headless/headless_progress.h"
#include "platform/headless/silent_prompts.h"
#include "sound/wave.h"

namespace {

constexpr double kRate = 44100;

struct StereoTrack {
    explicit StereoTrack(double seconds)
        : left(static_cast<std::size_t>(seconds * kRate)), right(left.size()) {}
    std::vector<double> left, right;
};

double NoteHz(int midiNote) {
    return 440 * std::pow(2.0, (midiNote - 69) / 12.0);
}

struct Note {
    double startSeconds;
    int midiNote;
    double level;  // 0 to 1
    double pan;    // -1 left to 1 right
};

void Mix(StereoTrack& track, std::size_t frame, double value, double pan) {
    if (frame >= track.left.size()) return;
    track.left[frame] += value * std::sqrt((1 - pan) / 2);
    track.right[frame] += value * std::sqrt((1 + pan) / 2);
}

// A plucked string: a burst of noise in a loop one period long, averaged as it goes round.
void Pluck(StereoTrack& track, const Note& note, double decay) {
    const auto period = static_cast<std::size_t>(kRate / NoteHz(note.midiNote));
    std::vector<double> loop(period);
    std::uint32_t noise = 12345u + static_cast<std::uint32_t>(note.midiNote) * 977u;
    for (double& value : loop) {
        noise = noise * 1664525u + 1013904223u;
        value = note.level * (static_cast<double>(noise >> 8) / (1 << 23) - 1);
    }
    const auto start = static_cast<std::size_t>(note.startSeconds * kRate);
    for (std::size_t i = 0; start + i < track.left.size(); ++i) {
        double& here = loop[i % period];
        Mix(track, start + i, here, note.pan);
        here = decay * 0.5 * (here + loop[(i + 1) % period]);
    }
}

// A bell: a few inharmonic partials, each with its own decay.
void Bell(StereoTrack& track, const Note& note, double seconds) {
    constexpr double kPartials[][2] = {{1, 1}, {2.01, 0.6}, {2.76, 0.4}, {4.07, 0.25}, {5.4, 0.15}};
    const auto start = static_cast<std::size_t>(note.startSeconds * kRate);
    for (std::size_t i = 0; i < static_cast<std::size_t>(seconds * kRate); ++i) {
        const double t = static_cast<double>(i) / kRate;
        double value = 0;
        for (const auto& [ratio, weight] : kPartials)
            value += weight * std::exp(-t * (2 + ratio) * 1.6 / seconds) *
                     std::sin(2 * std::numbers::pi * NoteHz(note.midiNote) * ratio * t);
        Mix(track, start + i, note.level * value * std::min(1.0, t * 400), note.pan);
    }
}

// A held tone that swells and fades, slightly detuned between the ears.
void Pad(StereoTrack& track, const Note& note, double seconds) {
    const auto start = static_cast<std::size_t>(note.startSeconds * kRate);
    const auto frames = static_cast<std::size_t>(seconds * kRate);
    for (std::size_t i = 0; i < frames && start + i < track.left.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double swell = std::pow(std::sin(std::numbers::pi * t / seconds), 2);
        const double angle = 2 * std::numbers::pi * NoteHz(note.midiNote) * t;
        track.left[start + i] += note.level * swell * (std::sin(angle) + 0.3 * std::sin(2 * angle));
        track.right[start + i] +=
            note.level * swell * (std::sin(angle * 1.003) + 0.3 * std::sin(2.006 * angle));
    }
}

// Rounds off what is louder than the rest, so that the quiet passages need not be inaudible, and
// closes with a short fade.
void Finish(StereoTrack& track) {
    const auto fade = static_cast<std::size_t>(kRate / 2);
    const std::size_t frames = track.left.size();
    for (auto* channel : {&track.left, &track.right}) {
        for (std::size_t i = 0; i < frames; ++i) {
            const double left = static_cast<double>(frames - i) / static_cast<double>(fade);
            (*channel)[i] = std::tanh(1.2 * (*channel)[i]) * std::min(1.0, left);
        }
    }
}

void ScaleTo(StereoTrack& track, double peakWanted) {
    double peak = 0;
    for (std::size_t i = 0; i < track.left.size(); ++i)
        peak = std::max({peak, std::abs(track.left[i]), std::abs(track.right[i])});
    for (auto* channel : {&track.left, &track.right})
        for (double& value : *channel) value *= peakWanted / peak;
}

bool Fill(sonavel::CWave& wave, const StereoTrack& track) {
    const auto frames = static_cast<std::uint32_t>(track.left.size());
    if (!wave.Create(2, 16, static_cast<std::uint32_t>(kRate), frames)) return false;
    for (std::uint32_t i = 0; i < frames; ++i) {
        wave.SetSample(0, i, static_cast<std::int32_t>(std::lround(track.left[i])));
        wave.SetSample(1, i, static_cast<std::int32_t>(std::lround(track.right[i])));
    }
    return true;
}

StereoTrack MakePiece() {
    StereoTrack piece(9.0);
    constexpr int kQuiet[] = {64, 67, 71, 76, 74, 71, 67, 71};
    for (int i = 0; i < 8; ++i)
        Pluck(piece, {0.15 + 0.3 * i, kQuiet[i], 0.3 + 0.05 * i, i % 2 ? 0.5 : -0.5}, 0.996);
    Pad(piece, {2.0, 52, 0.2, 0}, 2.4);
    Pad(piece, {2.0, 59, 0.15, 0}, 2.4);
    constexpr int kLoud[] = {76, 79, 83, 88, 86, 83, 79, 83, 81, 84, 88, 91};
    for (int i = 0; i < 12; ++i)
        Pluck(piece, {4.2 + 0.2 * i, kLoud[i], 1.6, std::sin(i * 0.9) * 0.8}, 0.994);
    for (int i = 0; i < 4; ++i) Pluck(piece, {4.2 + 0.6 * i, 40 + (i % 2) * 7, 1.1, 0}, 0.99);
    for (int note : {64, 71, 76, 80}) Bell(piece, {6.7, note, 0.3, (note - 72) / 16.0}, 2.2);
    return piece;
}

StereoTrack MakeChime() {
    StereoTrack chime(2.0);
    constexpr int kNotes[] = {72, 76, 79, 84};
    for (int i = 0; i < 4; ++i) Bell(chime, {0.08 + 0.16 * i, kNotes[i], 0.4, -0.6 + 0.4 * i}, 1.2);
    return chime;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_sounds SAMPLE.wav LOGO.wav\n");
        return 2;
    }
    sonavel::SilentPrompts prompts;
    sonavel::HeadlessProgress progress;
    sonavel::CWave wave(prompts, progress);

    StereoTrack piece = MakePiece();
    Finish(piece);
    ScaleTo(piece, 30000);
    if (!Fill(wave, piece)) return 1;
    // Names of even length: a reader of such files loses the labels behind an odd one.
    const auto frame = [](double seconds) { return static_cast<std::uint32_t>(seconds * kRate); };
    wave.Markers().Add(frame(0.15), "Plucked strings, soft ", frame(2.0));
    wave.Markers().Add(frame(2.0), "Pad swells", 0);
    wave.Markers().Add(frame(4.2), "Loud passage", frame(2.4));
    wave.Markers().Add(frame(6.7), "Last chord", 0);
    if (!wave.Save(argv[1], sonavel::MarkerSaving::kOn)) return 1;

    StereoTrack chime = MakeChime();
    ScaleTo(chime, 16000);
    if (!Fill(wave, chime)) return 1;
    return wave.Save(argv[2], sonavel::MarkerSaving::kOn) ? 0 : 1;
}
