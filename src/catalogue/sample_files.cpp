#include "catalogue/sample_files.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "platform/code_page_949.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

fs::path Absolute(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return (error ? path : absolute).lexically_normal();
}

// The window stays alive while the entries are checked one by one, so none may take long.
class HastyWatcher : public CodecWatcher {
  public:
    GoOn Watch() override {
        constexpr std::chrono::seconds kPatience{1};
        return std::chrono::steady_clock::now() - began_ < kPatience ? GoOn::kYes : GoOn::kNo;
    }

  private:
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

class SampleAdder : private CodecWatcher {
  public:
    SampleAdder(Catalogue& catalogue, const SoundCodecs* codecs, ProgressFactory& progress)
        : catalogue_(catalogue),
          codecs_(codecs),
          progress_(progress.CreateProgress("Add sound files")) {}

    AddedSamples Add(std::span<const fs::path> paths);

  private:
    bool Poll() { return result_.cancelled = result_.cancelled || progress_->Poll(); }
    GoOn Watch() override { return Poll() ? GoOn::kNo : GoOn::kYes; }
    void Find(const fs::path& path);
    void FindBelow(const fs::path& folder);
    void AddFile(const fs::path& file);

    Catalogue& catalogue_;
    const SoundCodecs* codecs_;
    std::unique_ptr<ProgressWindow> progress_;
    std::vector<fs::path> files_;
    AddedSamples result_;
};

void SampleAdder::FindBelow(const fs::path& folder) {
    std::error_code error;
    fs::recursive_directory_iterator file(folder, fs::directory_options::skip_permission_denied,
                                          error);
    const std::size_t first = files_.size();
    for (const fs::recursive_directory_iterator end; !error && file != end && !Poll();
         file.increment(error)) {
        std::error_code ignored;
        if (IsSoundFileName(file->path()) && file->is_regular_file(ignored))
            files_.push_back(file->path());
    }
    std::sort(files_.begin() + static_cast<std::ptrdiff_t>(first), files_.end());
}

void SampleAdder::Find(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error))
        FindBelow(Absolute(path));
    else
        files_.push_back(Absolute(path));
}

void SampleAdder::AddFile(const fs::path& file) {
    if (catalogue_.Contains(file.string())) {
        ++result_.known;
        return;
    }
    const Result<SampleFacts> facts = ProbeSample(file, codecs_, *this);
    if (result_.cancelled) return;
    if (facts && catalogue_.Add({file.string(), *facts, {}, FilePresence::kThere})) {
        ++result_.added;
        return;
    }
    const std::string reason = facts ? "The catalogue is full." : facts.Reason();
    if (result_.unreadable++ == 0)
        result_.firstFailure = DisplayText(file.filename().native()) + ": " + reason;
}

AddedSamples SampleAdder::Add(std::span<const fs::path> paths) {
    for (const fs::path& path : paths) Find(path);
    constexpr std::size_t kMostSteps = std::numeric_limits<int>::max();
    progress_->SetRange(0, static_cast<int>(std::min(files_.size(), kMostSteps)));
    for (std::size_t i = 0; i < files_.size() && !Poll(); ++i) {
        progress_->SetPosition(static_cast<int>(std::min(i, kMostSteps)));
        AddFile(files_[i]);
    }
    return result_;
}

// How the folder of one file has moved: the parts of the two paths before what they end alike in.
struct FolderMove {
    std::string from;
    std::string to;
};

std::string_view Parent(std::string_view path) {
    return path.substr(0, std::min(path.rfind('/'), path.size()));
}

std::string_view LastPart(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

FolderMove MoveOf(std::string_view before, std::string_view now) {
    before = Parent(before);
    now = Parent(now);
    while (!before.empty() && !now.empty() && LastPart(before) == LastPart(now)) {
        before = Parent(before);
        now = Parent(now);
    }
    return {std::string(before) + '/', std::string(now) + '/'};
}

Outcome Settle(Catalogue& catalogue, std::size_t entry, const std::string& path,
               const SoundCodecs* codecs) {
    CodecWatcher patient;
    const Result<SampleFacts> facts = ProbeSample(path, codecs, patient);
    if (!facts) return facts.Ended();
    if (!catalogue.SetPath(entry, path)) return Failed("The file is in the catalogue already.");
    catalogue.SetFacts(entry, *facts);
    catalogue.SetPresence(entry, FilePresence::kThere);
    return Done();
}

bool FollowMove(Catalogue& catalogue, std::size_t entry, const FolderMove& move,
                const SoundCodecs* codecs) {
    const CatalogueEntry& missing = catalogue.At(entry);
    if (missing.presence != FilePresence::kMissing || !missing.path.starts_with(move.from))
        return false;
    const std::string path = move.to + missing.path.substr(move.from.size());
    std::error_code error;
    return fs::is_regular_file(path, error) && Settle(catalogue, entry, path, codecs).IsDone();
}

}  // namespace

AddedSamples AddSamples(Catalogue& catalogue, std::span<const fs::path> paths,
                        const SoundCodecs* codecs, ProgressFactory& progress) {
    return SampleAdder(catalogue, codecs, progress).Add(paths);
}

CheckResult CheckSample(Catalogue& catalogue, std::size_t entry, Probing probing,
                        const SoundCodecs* codecs) {
    const std::string& path = catalogue.At(entry).path;
    std::error_code error;
    const bool there = fs::is_regular_file(path, error);
    const auto presence = there ? FilePresence::kThere : FilePresence::kMissing;
    const CheckResult result =
        catalogue.SetPresence(entry, presence) ? CheckResult::kPresenceChanged : CheckResult::kSame;
    const SampleFacts& known = catalogue.At(entry).facts;
    const bool changed =
        there && (known.format.empty() || fs::file_size(path, error) != known.fileBytes);
    if (!there || (probing == Probing::kWhenSizeChanged && !changed)) return result;
    HastyWatcher hasty;
    const Result<SampleFacts> facts = ProbeSample(path, codecs, hasty);
    return facts && catalogue.SetFacts(entry, *facts) ? CheckResult::kFactsChanged : result;
}

Result<std::size_t> LocateSample(Catalogue& catalogue, std::size_t entry, const fs::path& found,
                                 const SoundCodecs* codecs) {
    const std::string before = catalogue.At(entry).path;
    const std::string now = Absolute(found).string();
    if (Outcome settled = Settle(catalogue, entry, now, codecs); !settled) return settled;
    std::size_t count = 1;
    const FolderMove move = MoveOf(before, now);
    for (std::size_t i = 0; i < catalogue.Count(); ++i)
        if (i != entry && FollowMove(catalogue, i, move, codecs)) ++count;
    return count;
}

}  // namespace sonavel
