#include "app/save_details_dialog.h"

#include <QGridLayout>
#include <cmath>

#include "sound/sound_texts.h"

namespace sonavel {

namespace {

struct SoundFacts {
    std::uint32_t samplesPerSecond;
    unsigned channels;
    unsigned bits;
    double seconds;
};

QStringList FactTexts(const SoundFacts& facts) {
    const auto frames = static_cast<quint64>(std::llround(facts.seconds * facts.samplesPerSecond));
    const quint64 bytes = frames * facts.channels * (facts.bits / 8);
    return {QString::fromStdString(RateText(facts.samplesPerSecond)),
            QString::fromStdString(ChannelsText(facts.channels)),
            QString::fromStdString(BitsText(facts.bits)),
            QString::fromStdString(TimeText(facts.seconds)),
            QLocale::c().toString(frames),
            QLocale::c().toString(bytes)};
}

void FillColumn(QGridLayout& grid, int column, const QString& heading, const QStringList& texts) {
    auto* title = new QLabel(QStringLiteral("<b>%1</b>").arg(heading));
    grid.addWidget(title, 0, column, column == 0 ? Qt::AlignLeft : Qt::AlignRight);
    for (int row = 0; row < texts.size(); ++row) {
        auto* text = new QLabel(texts[row]);
        grid.addWidget(text, row + 1, column, column == 0 ? Qt::AlignLeft : Qt::AlignRight);
    }
}

}  // namespace

QString AttributesText(std::uint32_t samplesPerSecond, unsigned channels, unsigned bits) {
    return QString::fromStdString(RateText(samplesPerSecond) + ", " + BitsText(bits) + ", " +
                                  ChannelsText(channels));
}

SaveDetailsDialog::SaveDetailsDialog(const SaveAsRequest& original, const SaveAsChoice& update,
                                     QWidget* parent)
    : FormDialog(tr("File Information"), parent, QDialogButtonBox::Ok) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(24);
    FillColumn(*grid, 0, {},
               {tr("Sampling rate"), tr("Channels"), tr("Sample size"), tr("Length"), tr("Frames"),
                tr("Bytes of sound")});
    FillColumn(*grid, 1, tr("Original"),
               FactTexts({original.samplesPerSecond, original.channels, original.bits,
                          original.durationSeconds}));
    FillColumn(*grid, 2, tr("Update"),
               FactTexts({original.samplesPerSecond, update.channels, update.bits,
                          original.durationSeconds}));
    Body().addLayout(grid);
}

}  // namespace sonavel
