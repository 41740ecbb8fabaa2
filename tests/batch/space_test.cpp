// Whole runs of the commands for scenes, many places, loudspeakers and smooth sources.
#include <gtest/gtest.h>

#include <sstream>

#include "batch/batch_call.h"
#include "script/scene_file.h"
#include "support/sound_files.h"

namespace sonavel::batch {
namespace {

class SpaceTest : public ::testing::Test {
  protected:
    void Write(const char* name, std::string_view bytes) const {
        WriteFileBytes(folder_ / name, BytesOf(bytes));
    }

    // A mono 16-bit WAV file at 8000 Hz with a click in it.
    void WriteClick(const char* name, int frames, int at) const {
        WavParts parts;
        ByteBuilder data;
        for (int i = 0; i < frames; ++i) data.Little16(i == at ? 20000u : 0u);
        parts.data = data.Bytes();
        WriteFileBytes(folder_ / name, WavBytes(parts));
    }

    // "@" stands for the temporary folder.
    std::string Run(std::string script, int status = 0) const {
        Replace(script, "@", folder_.Path().string());
        std::istringstream in;
        std::ostringstream out, errors;
        EXPECT_EQ(
            RunBatchTool({"--folder", folder_.Path().string(), "-c", script}, {in, out, errors}),
            status)
            << script << errors.str();
        std::string text = out.str() + errors.str();
        Replace(text, folder_.Path().string(), "@");
        return text;
    }

    static void Replace(std::string& text, const std::string& from, const std::string& to) {
        for (std::size_t at = text.find(from); at != std::string::npos;
             at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    }

    TemporaryFolder folder_;
};

TEST_F(SpaceTest, WritesAFileForEachPointAndReplacesNoneUnasked) {
    WriteClick("dog.wav", 600, 50);
    Write("points.csv", "1,0,0\nBehind,0,-2,0\n");
    EXPECT_EQ(Run("open @/dog.wav; place-many @ points=@/points.csv"),
              "wrote \"@/dog_90_0.wav\" azimuth=90.0 elevation=0.0 distance=1.00\n"
              "wrote \"@/Behind_180_0.wav\" azimuth=180.0 elevation=0.0 distance=2.00\n");
    // Each is what the command for one place makes.
    EXPECT_EQ(Run("open @/dog_90_0.wav; samples 0 600"),
              Run("open @/dog.wav; positional 1 0 0; samples 0 600"));
    EXPECT_NE(Run("open @/dog.wav; place-many @ points=@/points.csv", 1)
                  .find("There is a file dog_90_0.wav already."),
              std::string::npos);
    Run("open @/dog.wav; place-many @ points=@/points.csv overwrite=on smooth=on");
    EXPECT_EQ(Run("open @/Behind_180_0.wav; samples 0 600"),
              Run("open @/dog.wav; positional 0 -2 0 smooth=on; samples 0 600"));
    for (const char* wrong : {"place-many @", "place-many @/dog.wav/in points=@/points.csv",
                              "place-many @ points=@/none",
                              "place-many @ points=@/points.csv pattern={direction} overwrite=on"})
        Run(std::string("open @/dog.wav; ") + wrong, 1);
}

TEST_F(SpaceTest, MixesASceneAsLongAsItsLastSound) {
    WriteClick("a.wav", 600, 0);
    std::filesystem::create_directory(folder_ / "sounds");
    WriteClick("sounds/b c.wav", 500, 10);
    Write("one.scene",
          "# Two sounds.\nsound a.wav point 1 0 0\n\n"
          "sound \"sounds/b c.wav\" path -1 0 0 0 1 0 0 2 0 start=100ms gain=-6 "
          "smooth=on doppler=on curve=spline\n");
    EXPECT_EQ(Run("scene @/one.scene; info"),
              "document 1 title=\"Scene_1\" rate=8000 channels=2 bits=16 frames=1300 bytes=5200 "
              "duration=0.162500 modified=1 selection=0..0 cursor=0 markers=0\n");
    // The first sound alone, before the second one starts.
    EXPECT_EQ(Run("scene @/one.scene; samples 0 600"),
              Run("open @/a.wav; positional 1 0 0; samples 0 600"));
    Write("two.scene", "sound a.wav point 1 0 0 start=300 gain=-6.02\n");
    const std::string late = Run("scene @/two.scene; samples 300 600");
    EXPECT_NE(late, Run("scene @/two.scene; samples 0 300"));
}

// Everything is brought down together where the sum is too loud.
TEST_F(SpaceTest, ASceneOfManyLoudSoundsPeaksAtFullScale) {
    WriteClick("a.wav", 600, 0);
    std::string scene;
    for (int i = 0; i < 6; ++i) scene += "sound a.wav point -0.6 0 0\n";
    Write("loud.scene", scene);
    std::istringstream lines(Run("scene @/loud.scene; samples 0 600"));
    int peak = 0;
    for (int frame = 0, left = 0, right = 0; lines >> frame >> left >> right;)
        peak = std::max({peak, std::abs(left), std::abs(right)});
    EXPECT_GE(peak, 32766);
    EXPECT_LE(peak, 32767);
}

TEST_F(SpaceTest, NamesTheLineThatASceneFailsAt) {
    WriteClick("a.wav", 100, 0);
    const std::pair<const char*, const char*> cases[] = {
        {"", "The scene has no sounds."},
        {"sound a.wav point 1 0\n", "Line 1 of the scene: expected \"sound PATH KIND X Y Z"},
        {"sound a.wav point 1 0 0 1 0 0\n", "Line 1 of the scene: expected one point"},
        {"\nsound a.wav path 1 0 0\n", "Line 2 of the scene: expected two points of the path"},
        {"noise a.wav point 1 0 0\n", "Line 1 of the scene: expected a command, not \"noise\""},
        {"sound a.wav point 1 0 0 loud=on\n", "Line 1 of the scene: expected "},
        {"sound a.wav path 1 0 0 0 1 0 doppler=on\n",
         "Line 1 of the scene: Doppler needs smooth responses."},
        {"sound a.wav point 1 0 0\nsound none.wav point 1 0 0\n", "Line 2 of the scene: "},
        {"sound a.wav point 1 0 0 start=200:00:00\n",
         "Line 1 of the scene: The scene is too long to become a stereo sound."},
    };
    for (const auto& [scene, reason] : cases) {
        Write("x.scene", scene);
        EXPECT_NE(Run("scene @/x.scene", 1).find(reason), std::string::npos)
            << scene << Run("scene @/x.scene", 1);
    }
    Run("scene @/none.scene", 1);
}

TEST_F(SpaceTest, TheKeysOfSmoothSourcesAreHeard) {
    WriteClick("a.wav", 2400, 1700);
    const char* renderings[] = {"positional 1 0.3 0",
                                "positional 1 0.3 0 smooth=on",
                                "moving -1 1 0 0 1 1 1 1 0",
                                "moving -1 1 0 0 1 1 1 1 0 curve=spline",
                                "moving -1 1 0 0 1 1 1 1 0 smooth=on",
                                "moving -1 1 0 0 1 1 1 1 0 smooth=on curve=spline",
                                "moving -1 1 0 0 1 1 1 1 0 smooth=on doppler=on",
                                "moving -1 1 0 0 1 1 1 1 0 smooth=on doppler=on metres-per-unit=3"};
    std::set<std::string> heard;
    for (const char* rendering : renderings)
        heard.insert(Run(std::string("open @/a.wav; ") + rendering + "; samples 1600 300"));
    EXPECT_EQ(heard.size(), std::size(renderings));
    EXPECT_EQ(Run("open @/a.wav; positional 1 0.3 0 smooth=off; samples 1600 300"),
              Run("open @/a.wav; positional 1 0.3 0; samples 1600 300"));
    EXPECT_NE(Run("open @/a.wav; positional 1 0.3 0; crosstalk angle=20; samples 1600 300"),
              Run("open @/a.wav; positional 1 0.3 0; crosstalk; samples 1600 300"));
    Run("open @/a.wav; crosstalk", 1);
    Run("open @/a.wav; positional 1 0 0 doppler=on", 2);
    Run("open @/a.wav; moving 1 0 0 1 1 1 doppler=on", 1);
}

}  // namespace
}  // namespace sonavel::batch
