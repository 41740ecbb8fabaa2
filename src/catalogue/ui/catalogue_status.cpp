#include "catalogue/ui/catalogue_status.h"

#include <QHBoxLayout>
#include <QLocale>

#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr QRgb kErrorColour = 0xffd03434;

QString NumberText(std::size_t count) {
    return QLocale().toString(static_cast<qlonglong>(count));
}

}  // namespace

CatalogueStatus::CatalogueStatus(QWidget* parent)
    : QWidget(parent), counts_(new QLabel(this)), note_(new QLabel(this)) {
    counts_->setObjectName(QStringLiteral("counts"));
    note_->setObjectName(QStringLiteral("note"));
    note_->setTextFormat(Qt::PlainText);
    note_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // A long message is cut off; it does not widen the window.
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(counts_);
    row->addWidget(note_, 1);
}

void CatalogueStatus::ShowCounts(const CatalogueCounts& counts) {
    const QString pattern = counts.sounds == 1 ? tr("%1 sound") : tr("%1 sounds");
    QStringList parts{pattern.arg(NumberText(counts.sounds))};
    if (counts.shown != counts.sounds) parts << tr("%1 shown").arg(NumberText(counts.shown));
    if (counts.missing > 0) parts << tr("%1 missing").arg(NumberText(counts.missing));
    if (counts.selected > 1) parts << tr("%1 selected").arg(NumberText(counts.selected));
    ShowText(parts.join(QStringLiteral(", ")));
}

void CatalogueStatus::ShowNote(const QString& text) {
    Show(text, counts_->palette());
}

void CatalogueStatus::ShowError(const QString& text) {
    QPalette palette = counts_->palette();
    palette.setColor(QPalette::WindowText, QColor(kErrorColour));
    Show(text, palette);
}

void CatalogueStatus::Show(const QString& text, const QPalette& palette) {
    note_->setPalette(palette);
    note_->setText(text);
    note_->setToolTip(text);
}

void CatalogueStatus::Tell(const Outcome& outcome) {
    if (!outcome) ShowError(Utf8Text(outcome.Reason()));
}

void CatalogueStatus::TellOf(const QString& name, const Outcome& outcome) {
    if (!outcome) ShowError(name + QStringLiteral(": ") + Utf8Text(outcome.Reason()));
}

}  // namespace sonavel
