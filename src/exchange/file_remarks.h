// What is wrong with a foreign file, in short sentences for the person, each said once.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace sonavel {

struct FileRemarks {
    std::vector<std::string> all;
    // Those of them that tell of content that is not there or was left out; the others tell of its
    // form alone, and a file written anew loses nothing by them.
    std::vector<std::string> missing;

    void AddOfForm(std::string_view sentence) { AddOnce(all, sentence); }
    void AddMissing(std::string_view sentence) {
        AddOnce(all, sentence);
        AddOnce(missing, sentence);
    }
    void Add(const FileRemarks& more) {
        for (const std::string& sentence : more.all) AddOnce(all, sentence);
        for (const std::string& sentence : more.missing) AddOnce(missing, sentence);
    }

    bool operator==(const FileRemarks&) const = default;

  private:
    static void AddOnce(std::vector<std::string>& to, std::string_view sentence) {
        if (std::ranges::find(to, sentence) == to.end()) to.emplace_back(sentence);
    }
};

}  // namespace sonavel
