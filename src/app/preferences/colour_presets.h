// The named sets of colours, each a section of Display.ini.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "view/draw/colour_table.h"

namespace sonavel {

class ColourPresets {
  public:
    explicit ColourPresets(const ProfileFile& display) : display_(display) {}

    std::vector<std::string> Names() const;  // in the order of the file
    // The defaults for a name that is not there.
    ColourTable Load(std::string_view name) const;
    // Each writes the file at once; false when that cannot be done, or for a name with a problem.
    bool Save(std::string_view name, const ColourTable& colours);
    bool Delete(std::string_view name);

    // The file's own defaults, where it has any, over those of the program.
    ColourTable Defaults() const;

    // Why a set cannot have that name; empty when it can.
    static std::string NameProblem(std::string_view name);

  private:
    ProfileFile display_;
};

}  // namespace sonavel
