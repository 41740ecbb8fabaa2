#include "catalogue/ui/catalogue_keeper.h"

#include <QElapsedTimer>

namespace sonavel {

namespace {

// Short enough not to be felt while typing.
constexpr int kCheckTurnMs = 5;

}  // namespace

CatalogueKeeper::CatalogueKeeper(const ProgramFolder& folder) : store_(folder) {
    saveTimer_.setSingleShot(true);
    saveTimer_.setInterval(kSaveDelay);
    saveTimer_.callOnTimeout(this, [this] {
        if (!Save()) Q_EMIT SaveFailed();
    });
    checkTimer_.callOnTimeout(this, [this] { CheckSome(); });
}

CatalogueKeeper::~CatalogueKeeper() {
    Save();
}

void CatalogueKeeper::Close() {
    saveTimer_.stop();
    checkTimer_.stop();
    loaded_.reset();
    name_.clear();
    changed_ = false;
}

bool CatalogueKeeper::Open(std::string name) {
    if (!Save()) return false;
    Close();
    std::optional<LoadedCatalogue> loaded = store_.Load(name);
    if (!loaded) return false;
    name_ = std::move(name);
    loaded_ = std::make_unique<LoadedCatalogue>(*std::move(loaded));
    CheckFiles(Probing::kWhenSizeChanged);
    return true;
}

bool CatalogueKeeper::Rename(const std::string& name) {
    const QString trimmed = QString::fromStdString(name).trimmed();
    if (!Save() || !store_.Rename(name_, trimmed.toStdString())) return false;
    name_ = trimmed.toStdString();
    return true;
}

bool CatalogueKeeper::Delete() {
    if (!store_.Delete(name_)) return false;
    Close();
    return true;
}

bool CatalogueKeeper::Reload() {
    return !IsOpen() || Open(name_);
}

void CatalogueKeeper::MarkChanged() {
    changed_ = true;
    saveTimer_.start();
}

bool CatalogueKeeper::Save() {
    saveTimer_.stop();
    if (!changed_) return true;
    changed_ = !store_.Save(name_, loaded_->catalogue);
    return !changed_;
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
        const CheckResult result = CheckSample(Current(), nextToCheck_, probing_);
        if (result == CheckResult::kFactsChanged) MarkChanged();
        if (result != CheckResult::kSame) Q_EMIT EntryChecked(nextToCheck_);
    }
    if (nextToCheck_ < Current().Count()) return;
    checkTimer_.stop();
    Q_EMIT ChecksDone();
}

}  // namespace sonavel
