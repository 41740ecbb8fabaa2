#include "catalogue/ui/catalogue_keeper.h"

#include <QElapsedTimer>

#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

// Short enough not to be felt while typing.
constexpr int kCheckTurnMs = 5;

}  // namespace

CatalogueKeeper::CatalogueKeeper(const ProgramFolder& folder, const SoundCodecs* codecs)
    : store_(folder), codecs_(codecs) {
    saveTimer_.setSingleShot(true);
    saveTimer_.setInterval(kSaveDelay);
    saveTimer_.callOnTimeout(this, [this] {
        if (const Outcome saved = Save(); !saved) Q_EMIT SaveFailed(Utf8Text(saved.Reason()));
    });
    checkTimer_.callOnTimeout(this, [this] { CheckSome(); });
}

CatalogueKeeper::~CatalogueKeeper() {
    static_cast<void>(Save());  // nobody is left to be told
}

void CatalogueKeeper::Close() {
    saveTimer_.stop();
    checkTimer_.stop();
    loaded_.reset();
    name_.clear();
    changed_ = false;
}

Outcome CatalogueKeeper::Open(std::string name) {
    if (Outcome saved = Save(); !saved) return saved;
    Close();
    Result<LoadedCatalogue> loaded = store_.Load(name);
    if (!loaded) return loaded.Ended();
    name_ = std::move(name);
    loaded_ = std::make_unique<LoadedCatalogue>(*std::move(loaded));
    CheckFiles(Probing::kWhenSizeChanged);
    return Done();
}

Outcome CatalogueKeeper::Rename(const std::string& name) {
    const QString trimmed = QString::fromStdString(name).trimmed();
    if (Outcome saved = Save(); !saved) return saved;
    if (Outcome renamed = store_.Rename(name_, trimmed.toStdString()); !renamed) return renamed;
    name_ = trimmed.toStdString();
    return Done();
}

Outcome CatalogueKeeper::Delete() {
    if (Outcome deleted = store_.Delete(name_); !deleted) return deleted;
    Close();
    return Done();
}

Outcome CatalogueKeeper::Reload() {
    return IsOpen() ? Open(name_) : Done();
}

void CatalogueKeeper::MarkChanged() {
    changed_ = true;
    saveTimer_.start();
}

Outcome CatalogueKeeper::Save() {
    saveTimer_.stop();
    if (!changed_) return Done();
    Outcome saved = store_.Save(name_, loaded_->catalogue);
    changed_ = !saved;
    return saved;
}

void CatalogueKeeper::Remove(std::span<const std::size_t> entries) {
    loaded_->catalogue.Remove(entries);
    MarkChanged();
    // Those not yet looked at stand elsewhere now.
    if (checkTimer_.isActive()) nextToCheck_ = 0;
}

void CatalogueKeeper::CheckFiles(Probing probing) {
    nextToCheck_ = 0;
    probing_ = probing;
    checkTimer_.start(0);
}

void CatalogueKeeper::CheckSome() {
    QElapsedTimer turn;
    turn.start();
    for (; nextToCheck_ < Current().Count() && turn.elapsed() < kCheckTurnMs; ++nextToCheck_) {
        const CheckResult result = CheckSample(Current(), nextToCheck_, probing_, codecs_);
        if (result == CheckResult::kFactsChanged) MarkChanged();
        if (result != CheckResult::kSame) Q_EMIT EntryChecked(nextToCheck_);
    }
    if (nextToCheck_ < Current().Count()) return;
    checkTimer_.stop();
    Q_EMIT ChecksDone();
}

}  // namespace sonavel
