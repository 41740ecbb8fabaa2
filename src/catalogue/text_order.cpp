#include "catalogue/text_order.h"

namespace sonavel {

std::string FoldCase(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
        .toCaseFolded()
        .toStdString();
}

QCollator TextOrder() {
    // Not the C locale, in which the collator would compare bytes.
    QCollator order(QLocale(QLocale::English, QLocale::UnitedStates));
    order.setCaseSensitivity(Qt::CaseInsensitive);
    order.setNumericMode(true);
    return order;
}

}  // namespace sonavel
