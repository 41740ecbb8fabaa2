// A catalogue, a folder with sound files, and what probing them needs.
#pragma once

#include <gtest/gtest.h>

#include "catalogue/catalogue_rows.h"
#include "catalogue/catalogue_store.h"
#include "catalogue/sample_files.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/silent_prompts.h"
#include "support/sound_files.h"

namespace sonavel {

class CatalogueFixture : public ::testing::Test {
  protected:
    std::filesystem::path WriteWav(std::string_view name, std::size_t frames) {
        WavParts parts;
        parts.data = FileBytes(frames * 2);
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        WriteFileBytes(path, WavBytes(parts));
        return path;
    }
    // Entries of files that do not exist, in /s.
    void AddNames(const std::vector<std::string>& names) {
        for (const std::string& name : names) ASSERT_TRUE(catalogue.Add({"/s/" + name, {}}));
    }
    AddedSamples Add(const std::vector<std::filesystem::path>& paths) {
        return AddSamples(catalogue, paths, progress);
    }
    static std::vector<std::string> NamesOf(const Catalogue& shown, const CatalogueRows& rows) {
        std::vector<std::string> names;
        for (const std::uint32_t entry : rows.Entries())
            names.emplace_back(shown.At(entry).FileName());
        return names;
    }

    TemporaryFolder folder;
    SilentPrompts prompts;
    HeadlessProgress progress;
    Catalogue catalogue;
};

}  // namespace sonavel
