// The catalogue that is open: saved soon after each change, its files looked at between other work.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <memory>
#include <string>

#include "catalogue/catalogue_store.h"
#include "catalogue/sample_files.h"

namespace sonavel {

class CatalogueKeeper : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kSaveDelay{500};

    // Foreign formats are looked at with `codecs` alone, which may be null.
    explicit CatalogueKeeper(const ProgramFolder& folder, const SoundCodecs* codecs = nullptr);
    ~CatalogueKeeper() override;  // saves

    CatalogueStore& Store() { return store_; }

    bool IsOpen() const { return loaded_ != nullptr; }
    const std::string& Name() const { return name_; }  // empty when none is open
    Catalogue& Current() { return loaded_->catalogue; }
    std::size_t DamagedLines() const { return loaded_->damagedLines; }

    // Saves and closes the one before. When that cannot be saved it stays open; when the new one
    // cannot be read none is open.
    Outcome Open(std::string name);
    // Of the one that is open.
    Outcome Rename(const std::string& name);
    Outcome Delete();
    // Reads the open one again, if any, with the fields as they are now.
    Outcome Reload();

    // To be called after each change.
    void MarkChanged();
    Outcome Save();
    void Remove(std::span<const std::size_t> entries);
    // Goes through all entries in short turns of the event loop.
    void CheckFiles(Probing probing);

  Q_SIGNALS:
    void EntryChecked(std::size_t entry);  // it is not what it was
    void ChecksDone();
    void SaveFailed(const QString& reason);

  private:
    void Close();
    void CheckSome();

    CatalogueStore store_;
    const SoundCodecs* codecs_;
    std::string name_;
    std::unique_ptr<LoadedCatalogue> loaded_;
    bool changed_ = false;
    QTimer saveTimer_;
    QTimer checkTimer_;
    std::size_t nextToCheck_ = 0;
    Probing probing_ = Probing::kWhenSizeChanged;
};

}  // namespace sonavel
