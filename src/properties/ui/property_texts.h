// The texts of the file properties.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "document/sound_doc.h"
#include "properties/sound_statistics.h"

namespace sonavel {

struct PropertyRow {
    QString name;
    QString value;
};

// Of the file on the disk; a sound without one has a title alone.
QList<PropertyRow> FileRows(const CSoundDoc& document);
QList<PropertyRow> FormatRows(const Sound& sound);
// What the undo history holds of samples, in memory and on the disk.
PropertyRow HistoryRow(const UndoHistory& history);

// One row for each kind of value, with a value for each channel.
struct StatisticsRow {
    QString name;
    QStringList values;
};
QList<StatisticsRow> StatisticsRows(const SoundStatistics& statistics,
                                    std::uint32_t samplesPerSecond);

// Number, position, frame, length and name of each marker.
QList<QStringList> MarkerRows(const Sound& sound);

}  // namespace sonavel
