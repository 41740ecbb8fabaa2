// Imports files for the window: finds those that Open refuses and Import reads, asks about them
// once, and asks what each import needs to know.
#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "app/exchange/import_dialog.h"
#include "app/exchange/refused_files_box.h"
#include "exchange/sound_import.h"
#include "workspace/workspace.h"

namespace sonavel {

class SoundImporter {
  public:
    using Imported = std::function<void(const QString& path)>;

    // The dialogs stand over the window; `imported` is told each file that became a sound. Paths
    // are file texts (platform/qt/file_names.h).
    SoundImporter(Workspace& workspace, QWidget* window, Imported imported)
        : workspace_(workspace), window_(window), imported_(std::move(imported)) {}

    // Those of the files that Open refuses and Import reads, with the reason of each.
    std::vector<RefusedFile> RefusedOf(const QStringList& paths) const;
    // Imports them, after one box for all of them unless that is done without from now on. Deep
    // samples stay; only channels are asked for.
    Outcome Offer(const std::vector<RefusedFile>& refused);

    // Imports them one after the other; asks what to do with deep samples and many channels. A file
    // that is open already is brought to the front. A cancel ends it; of several failures the last
    // one is returned, with the name of the file.
    Outcome Import(const QStringList& paths);

  private:
    enum class Asking : std::uint8_t { kDepthAndChannels, kChannels };
    // An answer that holds for the files that follow.
    struct Answer {
        SoundFileDescription description;  // of the file that was asked about
        ImportChoice choice;
    };
    struct Place {
        Asking asking;
        ImportQuestion::Place place;
    };

    Result<SoundFileHead> Probe(const QString& path) const;
    Outcome ImportAll(const QStringList& paths, Asking asking);
    Outcome ImportOne(const QString& path, const Place& place);
    Result<ImportChoice> ChoiceFor(const QString& path, const SoundFileDescription& description,
                                   const Place& place);
    bool MayImport(const std::vector<RefusedFile>& refused) const;

    Workspace& workspace_;
    QPointer<QWidget> window_;
    Imported imported_;
    std::optional<Answer> answer_;
};

}  // namespace sonavel
