#include "app/bars/format_bar.h"

#include <QLocale>

#include "platform/qt/utf8_text.h"
#include "sound/sound_texts.h"
#include "view/state/status_texts.h"

namespace sonavel {

namespace {

constexpr int kFieldPadding = 12;

struct FieldLook {
    const char* name;
    const char* widestText;  // of usual ones; a wider text widens its field
};

constexpr FieldLook kLooks[] = {
    {"rate", "192,000 Hz"},     {"bits", "16-bit"},   {"channels", "Stereo"},
    {"length", "00:00:00.000"}, {"size", "888.8 MB"}, {"history", "Undo: 888.8 MB"},
};

QString Exactly(std::uint64_t bytes) {
    return QLocale::c().toString(static_cast<qulonglong>(bytes));
}

}  // namespace

FormatBar::FormatBar(const QString& name, QWidget* parent) : QToolBar(name, parent) {
    setObjectName(QString(name).remove(u' '));
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        auto* field = new QLabel(this);
        field->setObjectName(QLatin1String(kLooks[i].name));
        field->setAlignment(Qt::AlignCenter);
        field->setMinimumWidth(
            fontMetrics().horizontalAdvance(QLatin1String(kLooks[i].widestText)) + kFieldPadding);
        if (i > 0) addSeparator();
        addWidget(field);
        fields_[i] = field;
    }
}

void FormatBar::Show(Field field, const QString& text, const QString& toolTip) {
    fields_[field]->setText(text);
    fields_[field]->setToolTip(toolTip);
}

void FormatBar::ShowSound(const CSoundDoc& document, const CSoundView& view) {
    const CWave& sound = document.Sound();
    const std::uint32_t rate = sound.GetSamplesPerSecond();
    const std::uint32_t frames = sound.GetFrameCount();
    Show(kRate, Utf8Text(RateText(rate)), tr("Sampling rate"));
    Show(kBits, Utf8Text(BitsText(sound.GetBits())), tr("Sample size"));
    Show(kChannels, Utf8Text(ChannelsText(sound.GetChannels())), tr("Channels"));
    Show(kLength, Utf8Text(PositionText(view.Settings().statusFormat, frames, rate)),
         tr("Length: %1 frames").arg(Exactly(frames)));
    Show(kSize, MemoryText(sound.GetDataSize()),
         tr("Size of the sound: %1 bytes").arg(Exactly(sound.GetDataSize())));
    ShowHistory(document);
}

void FormatBar::ShowHistory(const CSoundDoc& document) {
    const UndoHistory& history = document.History();
    // Switching undo off keeps the steps of before.
    if (!document.Options().saveUndo && history.Count() == 0)
        return Show(kHistory, tr("Undo: off"), tr("The preferences have no undo history kept"));
    const std::uint64_t kept = history.MemoryBytes(), spilled = history.SpilledBytes();
    QString text = tr("Undo: %1").arg(MemoryText(kept));
    QString tip = tr("Memory of the undo history: %1 bytes in %2 step(s)")
                      .arg(Exactly(kept), Exactly(history.Count()));
    if (spilled > 0) {
        text += tr(" + %1").arg(MemoryText(spilled));
        tip += tr(", and %1 bytes on the disk").arg(Exactly(spilled));
    }
    Show(kHistory, text, tip);
}

void FormatBar::Clear() {
    for (QLabel* field : fields_) {
        field->clear();
        field->setToolTip({});
    }
}

QString FormatBar::MemoryText(std::uint64_t bytes) {
    QString text = QLocale::c().formattedDataSize(static_cast<qint64>(bytes), 1,
                                                  QLocale::DataSizeTraditionalFormat);
    return text.replace(u'k', u'K');
}

}  // namespace sonavel
