#include "app/help/manual_pages.h"

#include <QFile>
#include <QWidget>
#include <iterator>

#include "app/help/generated_texts.h"
#include "effects/ui/effect_dialog.h"

static void InitialiseManual() {
    Q_INIT_RESOURCE(manual);
}

namespace sonavel {
namespace {

constexpr const char* kStartPages = "Start";
constexpr const char* kTaskPages = "Tasks";
constexpr const char* kEffectPages = "Effects";
constexpr const char* kReferencePages = "Reference";

constexpr ManualPage kPages[] = {
    {"index", "Sonavel", kStartPages},
    {"first-steps", "First steps in two minutes", kStartPages},
    {"window", "The window", kStartPages},
    {"cut-speech", "Cut speech", kTaskPages},
    {"loudness", "Make a sound louder or softer", kTaskPages},
    {"chapters", "Set markers and chapters", kTaskPages},
    {"regions", "Find pauses and export regions", kTaskPages},
    {"record", "Record", kTaskPages},
    {"mix", "Mix sounds", kTaskPages},
    {"space", "Place a sound in space", kTaskPages},
    {"hearing-in-space", "Hearing in space", kTaskPages},
    {"many-files", "Many files at once", kTaskPages},
    {"import", "Import and export", kTaskPages},
    {"catalogue", "Keep a database of sounds", kTaskPages},
    {"effect-volume", "Volume", kEffectPages},
    {"effect-panpot", "Panpot and crossfade", kEffectPages},
    {"effect-dynamics", "Dynamics", kEffectPages},
    {"effect-equalizer", "Graphic equalizer", kEffectPages},
    {"effect-reverb", "Reverberation", kEffectPages},
    {"effect-flanger", "Flanger", kEffectPages},
    {"effect-modulator", "Modulator", kEffectPages},
    {"effect-fade-in", "Fade in", kEffectPages},
    {"effect-fade-out", "Fade out", kEffectPages},
    {"effect-normalise", "Normalise", kEffectPages},
    {"effect-mute", "Mute", kEffectPages},
    {"effect-invert", "Invert", kEffectPages},
    {"effect-remove-offset", "Remove DC offset", kEffectPages},
    {"effect-tempo", "Tempo", kEffectPages},
    {"effect-pitch", "Pitch", kEffectPages},
    {"effect-reverse", "Reverse", kEffectPages},
    {"effect-echo", "Echo", kEffectPages},
    {"effect-noise-reduce", "Noise reduction", kEffectPages},
    {"convert", "Convert", kEffectPages},
    {"keys", "Keys", kReferencePages},
    {"formats", "Formats and what each keeps", kReferencePages},
    {"preferences", "Preferences", kReferencePages},
    {"scripts", "Scripts", kReferencePages},
    {"troubleshooting", "When something does not work", kReferencePages},
    {"peculiarities", "Known peculiarities", kReferencePages},
    {"whats-new", "Changelog", kReferencePages},
    {"licences", "Licences", kReferencePages},
};

struct PageOfClass {
    const char* className;
    const char* page;
};

constexpr PageOfClass kClasses[] = {
    {"CRecordDlg", "record"},
    {"MixDialog", "mix"},
    {"CrossfadeDialog", "mix"},
    {"ClipboardContentsDialog", "mix"},
    {"PasteReplicateDialog", "cut-speech"},
    {"MarkerDialog", "chapters"},
    {"ConvertDialog", "convert"},
    {"PausesDialog", "regions"},
    {"RegionsDialog", "regions"},
    {"SpatialDialog", "space"},
    {"PlaceManyDialog", "space"},
    {"ShapeDialog", "space"},
    {"SceneDialog", "space"},
    {"CrosstalkDialog", "space"},
    {"KeysDialog", "keys"},
    {"CommandPalette", "keys"},
    {"SpectrogramDialog", "window"},
    {"UserZoomDialog", "window"},
    {"GoToDialog", "window"},
    {"COptionSheet", "preferences"},
    {"ImportDialog", "import"},
    {"ExportDialog", "import"},
    {"SaveAsDialog", "formats"},
    {"SaveDetailsDialog", "formats"},
    {"CFilePropertiesSheet", "formats"},
    {"ChannelConversionDialog", "formats"},
    {"CatalogueWindow", "catalogue"},
};

QString PageOfClassOf(const QMetaObject* meta) {
    for (; meta; meta = meta->superClass()) {
        const QString name = QString::fromLatin1(meta->className()).section(u':', -1);
        for (const PageOfClass& row : kClasses)
            if (name == QLatin1String(row.className)) return QString::fromLatin1(row.page);
    }
    return {};
}

bool HasAll(const QString& text, const QString& words) {
    return std::ranges::all_of(words.split(u' ', Qt::SkipEmptyParts), [&](const QString& word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

}  // namespace

std::span<const ManualPage> ManualPages() {
    return kPages;
}

QUrl UrlOfPage(const QString& name) {
    return QUrl(QStringLiteral("qrc:/manual/%1.md").arg(name));
}

QString TextOfPage(const QString& name) {
    InitialiseManual();
    QFile file(QStringLiteral(":/manual/%1.md").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return WithGeneratedTexts(QString::fromUtf8(file.readAll()));
}

QStringList PagesWith(const QString& words) {
    QStringList found;
    for (const ManualPage& page : kPages) {
        const QString name = QString::fromLatin1(page.name);
        if (HasAll(TextOfPage(name), words)) found << name;
    }
    return found;
}

QString PageToOpen(const QStringList& found, const QString& words, const QString& current) {
    QStringList titled;
    for (const ManualPage& page : kPages) {
        const QString name = QString::fromLatin1(page.name);
        if (found.contains(name) && HasAll(QString::fromUtf8(page.title), words)) titled << name;
    }
    const QStringList& best = titled.isEmpty() ? found : titled;
    return best.isEmpty() || best.contains(current) ? current : best.front();
}

QString PageOfWindow(const QWidget* window) {
    if (const auto* effect = qobject_cast<const EffectDialog*>(window))
        return QStringLiteral("effect-") + QString::fromLatin1(effect->Row().name);
    return window ? PageOfClassOf(window->metaObject()) : QString();
}

}  // namespace sonavel
