#include "app/exchange/origin_line.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

namespace sonavel {

OriginLine::OriginLine(QWidget* parent) : QFrame(parent), label_(new QLabel(this)) {
    setObjectName(QStringLiteral("originLine"));
    setAutoFillBackground(true);
    // What is damaged in a file may take many words; the window must not grow by them.
    label_->setWordWrap(true);
    label_->setTextFormat(Qt::PlainText);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto* close = new QToolButton(this);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setToolTip(tr("Hide this line; View > Import Line shows it again"));
    close->setAccessibleName(tr("Hide this line"));
    close->setAutoRaise(true);
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, [this] {
        hide();
        Q_EMIT Dismissed();
    });

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 1, 1, 1);
    row->addWidget(label_, 1);
    row->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void OriginLine::ShowText(const QString& text) {
    if (text == label_->text()) return;
    label_->setText(text);
    setVisible(!text.isEmpty());
}

}  // namespace sonavel
