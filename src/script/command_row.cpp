#include "script/command_row.h"

namespace sonavel::script {
namespace {

std::string PositionalSignature(const CommandRow& row) {
    std::string text;
    for (std::size_t i = 0; i < row.positional.size(); ++i) {
        text += ' ';
        if (i == row.firstOptional) text += '[';
        text += row.positional[i].name;
    }
    if (row.firstOptional < row.positional.size()) text += ']';
    if (row.repeated > 0) text += " ...";
    return text;
}

}  // namespace

std::string SignatureOf(const CommandRow& row) {
    std::string text = row.name + PositionalSignature(row);
    if (row.prefix != Prefix::kNone) text += " COMMAND ...";
    for (const KeyRule& key : row.keys) {
        text += " [" + key.name + '=';
        text += key.defaultText.empty() ? "..." : key.defaultText;
        text += ']';
    }
    return text;
}

}  // namespace sonavel::script
