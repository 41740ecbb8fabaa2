#include "workspace/workspace.h"

#include <algorithm>

#include "document/edit_operations.h"
#include "platform/failure_texts.h"
#include "view/commands/transport.h"

namespace sonavel {
namespace {

constexpr std::string_view kNewTitle = "Sound";

}  // namespace

Workspace::Workspace(const HostServices& services) : services_(services) {}

Workspace::~Workspace() {
    LeaveKeeper();
}

void Workspace::LeaveKeeper() {
    if (!keeper_) return;
    for (const auto& sound : sounds_) keeper_->Leave(*sound->document);
    keeper_ = nullptr;
}

void Workspace::SetInitialViewSize(int width, int height) {
    viewWidth_ = width;
    viewHeight_ = height;
}

// --- Looking up

OpenSound* Workspace::Active() {
    return activationOrder_.empty() ? nullptr : activationOrder_.back();
}

const OpenSound* Workspace::Active() const {
    return activationOrder_.empty() ? nullptr : activationOrder_.back();
}

std::optional<std::size_t> Workspace::ActiveIndex() const {
    if (activationOrder_.empty()) return std::nullopt;
    return IndexOf(*activationOrder_.back()->document);
}

std::optional<std::size_t> Workspace::IndexOf(const CSoundDoc& document) const {
    for (std::size_t index = 0; index < sounds_.size(); ++index)
        if (sounds_[index]->document.get() == &document) return index;
    return std::nullopt;
}

std::optional<std::size_t> Workspace::IndexOfPath(const std::filesystem::path& path) const {
    const std::filesystem::path wanted = path.lexically_normal();
    for (std::size_t index = 0; index < sounds_.size(); ++index) {
        const std::filesystem::path& open = sounds_[index]->document->Path();
        if (!open.empty() && open.lexically_normal() == wanted) return index;
    }
    return std::nullopt;
}

// --- Opening

std::unique_ptr<OpenSound> Workspace::MakeSound() {
    auto sound = std::make_unique<OpenSound>();
    sound->document = std::make_unique<CSoundDoc>(services_);
    sound->view = std::make_unique<CSoundView>(*sound->document, *this);
    sound->commands = std::make_unique<SoundViewCommands>(*sound->view);
    return sound;
}

OpenSound& Workspace::Add(std::unique_ptr<OpenSound> sound) {
    OpenSound& added = *sound;
    sounds_.push_back(std::move(sound));
    const std::string word = keeper_ ? keeper_->Watch(*added.document) : std::string();
    if (viewWidth_ > 0) added.view->Show(viewWidth_, viewHeight_);
    if (observer_) observer_->OnDocumentAdded(added);
    Activate(sounds_.size() - 1);
    if (!word.empty()) services_.prompts.ShowMessage(word);
    return added;
}

Outcome Workspace::NewDocument(const NewSoundChoice& format) {
    return NewTitledDocument(format, kNewTitle);
}

Outcome Workspace::NewTitledDocument(const NewSoundChoice& format, std::string_view titlePrefix) {
    std::unique_ptr<OpenSound> sound = MakeSound();
    if (Outcome made = sound->document->NewDocument(format); !made) return made;
    sound->document->SetTitle(titles_.Next(titlePrefix));
    Add(std::move(sound));
    return Done();
}

Outcome Workspace::OpenDocument(const std::filesystem::path& path) {
    std::unique_ptr<OpenSound> sound = MakeSound();
    if (Outcome opened = sound->document->OpenDocument(path); !opened) return opened;
    Add(std::move(sound));
    return Done();
}

Outcome Workspace::ImportDocument(const std::filesystem::path& path, const ImportChoice& choice) {
    std::unique_ptr<OpenSound> sound = MakeSound();
    if (Outcome imported = sound->document->ImportDocument(path, choice); !imported)
        return imported;
    Add(std::move(sound));
    return Done();
}

void Workspace::NewDocumentFromSound(Sound&& copy, std::string_view titlePrefix) {
    std::unique_ptr<OpenSound> sound = MakeSound();
    sound->document->Sound().Adopt(std::move(copy));
    sound->document->SetTitle(titles_.Next(titlePrefix));
    sound->document->NotifyChanged(0);
    Add(std::move(sound));
}

Outcome Workspace::NewDocumentFromClip() {
    std::unique_ptr<OpenSound> sound = MakeSound();
    if (Outcome made = edit::ReplaceWithClip(*sound->document, clip_); !made) return made;
    sound->document->SetTitle(titles_.Next(untitled_prefix::kPaste));
    Add(std::move(sound));
    return Done();
}

Outcome Workspace::RecoverDocument(const recovery::LeftWork& work) {
    std::unique_ptr<OpenSound> sound = MakeSound();
    const Result<std::string> word = keeper_->Recover(work, *sound->document);
    if (!word) return word.Ended();
    Add(std::move(sound));
    if (!word->empty()) services_.prompts.ShowMessage(*word);
    return Done();
}

// --- Activating and closing

void Workspace::Activate(std::size_t index) {
    OpenSound* sound = sounds_[index].get();
    if (Active() == sound) return;
    std::erase(activationOrder_, sound);
    activationOrder_.push_back(sound);
    if (observer_) observer_->OnActivated(sound);
}

Outcome Workspace::StopActivity(std::size_t index) {
    OpenSound& sound = *sounds_[index];
    CWavePlayer& player = sound.document->Sound();
    Outcome kept = player.IsRecording() ? sound.view->Playing().EndRecording() : Done();
    sound.document->EndMarkerEdit();
    player.Stop(CWavePlayer::StopReport::kShow);
    sound.document->Preview().Stop(CWavePlayer::StopReport::kSilent);
    return kept;
}

void Workspace::Close(std::size_t index) {
    // Whoever is to be told of a recording that was lost has stopped it before.
    static_cast<void>(StopActivity(index));
    OpenSound* sound = sounds_[index].get();
    const bool wasActive = Active() == sound;
    if (observer_) observer_->OnDocumentClosing(*sound);
    sound->view->SetObserver(nullptr);
    if (keeper_) keeper_->Discard(*sound->document);
    std::erase(activationOrder_, sound);
    sounds_.erase(sounds_.begin() + static_cast<std::ptrdiff_t>(index));
    if (wasActive && observer_) observer_->OnActivated(Active());
}

void Workspace::OnChosen(const ViewChoice& choice) {
    for (const auto& sound : sounds_) sound->view->ShowChosen(choice);
}

// --- Recording

Result<RecordRequest> Workspace::QuestionOfRecord() const {
    RecordRequest request;
    request.initial = recordSettings_;
    if (const OpenSound* active = Active()) {
        const CWavePlayer& sound = active->document->Sound();
        if (sound.IsRecording()) return Failed("The sound is being recorded.");
        request.documentFormat =
            NewSoundChoice{sound.GetSamplesPerSecond(), sound.GetChannels(), sound.GetBits()};
        request.initial.target = RecordChoice::Target::kActiveDocument;
        request.initial.format = *request.documentFormat;
    }
    return request;
}

Outcome Workspace::Record(const RecordChoice& choice) {
    recordSettings_.waiting = choice.waiting;
    recordSettings_.waitingTenths = std::clamp(choice.waitingTenths, 0, kHighestWaitingTenths);
    const bool needsNew = !Active() || choice.target == RecordChoice::Target::kNewDocument;
    if (needsNew)
        if (Outcome made = NewTitledDocument(choice.format, untitled_prefix::kRecorder); !made)
            return made;
    OpenSound& sound = *Active();
    if (Outcome started = sound.document->StartRecording(); !started) return started;
    sound.view->Playing().NoteTransportState();
    return Done();
}

}  // namespace sonavel
