#include "properties/ui/property_texts.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"
#include "sound/decibels.h"
#include "sound/file_formats.h"
#include "sound/sample_types.h"
#include "sound/sound_texts.h"

namespace sonavel {

namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CFilePropertiesSheet", text);
}

QString Counted(qint64 count) {
    return QLocale::c().toString(count);
}

QString DateText(const QDateTime& date) {
    return date.isValid() ? QLocale().toString(date, QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                          : Tr("unknown");
}

QDateTime DateOf(const statx_timestamp& time) {
    return QDateTime::fromSecsSinceEpoch(time.tv_sec);
}

QString TypeText(const std::filesystem::path& path) {
    const FileFormat* format = FileFormatOfExtension(ExtensionFromFirstDot(path));
    return format ? Utf8Text(format->saveName) : Tr("unknown");
}

double SecondsOf(qint64 frames, std::uint32_t samplesPerSecond) {
    return samplesPerSecond > 0 ? static_cast<double>(frames) / samplesPerSecond : 0;
}

QString DecibelText(double value, std::int32_t reference) {
    const auto decibels = LevelInDecibels(value, reference);
    return decibels ? QStringLiteral("%1 dB").arg(*decibels, 0, 'f', 2) : Tr("-Inf. dB");
}

QString PercentText(double value, std::int32_t reference) {
    const double percent = reference > 0 ? value * 100 / reference : 0;
    return QStringLiteral("%1 %").arg(percent, 0, 'f', 3);
}

QString FormatText(const PcmFormat& format) {
    return AreWholeNumbers(format.bitsPerSample) ? Utf8Text(FormatTagName(format.formatTag))
                                                 : Tr("IEEE float");
}

// A level of floats is shown as its share of full scale.
QString PeakText(std::int32_t level, std::int32_t reference) {
    if (reference <= WordSample::kFullScale / 2) return QString::number(level);
    return QString::number(static_cast<double>(level) / reference, 'f', 5);
}

}  // namespace

QList<PropertyRow> FileRows(const CSoundDoc& document) {
    const QString title = Utf8Text(document.Title());
    if (document.Path().empty()) return {{Tr("Name:"), title}, {Tr("Path:"), Tr("not saved yet")}};
    const QString path = ShownFileText(FileText(document.Path()));
    struct statx file;
    if (statx(AT_FDCWD, document.Path().c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &file) != 0)
        return {{Tr("Name:"), title},
                {Tr("Path:"), path},
                {Tr("Size:"), Tr("The file is not there any more")}};
    return {
        {Tr("Name:"), title},
        {Tr("Path:"), path},
        document.IsImported() ? PropertyRow{Tr("File:"), Utf8Text(document.OriginLine())}
                              : PropertyRow{Tr("File type:"), TypeText(document.Path())},
        {Tr("Size:"), Tr("%1 Bytes").arg(Counted(static_cast<qint64>(file.stx_size)))},
        {Tr("Created:"),
         DateText(file.stx_mask & STATX_BTIME ? DateOf(file.stx_btime) : QDateTime())},
        {Tr("Modified:"), DateText(DateOf(file.stx_mtime))},
        {Tr("Accessed:"), DateText(DateOf(file.stx_atime))},
        {Tr("Unsaved changes:"), document.GetModified() ? Tr("yes") : Tr("no")},
    };
}

QList<PropertyRow> FormatRows(const Sound& sound) {
    return {
        {Tr("Format:"), FormatText(sound.GetFormat())},
        {Tr("Sampling rate:"), Utf8Text(RateText(sound.GetSamplesPerSecond()))},
        {Tr("Sample size:"), Utf8Text(BitsText(sound.GetBits()))},
        {Tr("Channels:"), Utf8Text(ChannelsText(sound.GetChannels()))},
        {Tr("Frames:"), Utf8Text(FrameCountText(sound.GetFrameCount()))},
        {Tr("Duration:"), Utf8Text(TimeText(sound.GetDuration()))},
        {Tr("Bytes of sound:"), Utf8Text(ByteCountText(sound.GetDataSize()))},
        {Tr("Bytes a second:"), Utf8Text(ByteCountText(sound.GetFormat().averageBytesPerSecond))},
    };
}

PropertyRow HistoryRow(const UndoHistory& history) {
    QString held = Tr("%1 in %2 step(s)")
                       .arg(Utf8Text(ByteCountText(history.MemoryBytes())),
                            Counted(static_cast<qint64>(history.Count())));
    if (const std::uint64_t spilled = history.SpilledBytes())
        held += Tr(", %1 on the disk").arg(Utf8Text(ByteCountText(spilled)));
    return {Tr("Undo history:"), held};
}

QList<StatisticsRow> StatisticsRows(const SoundStatistics& statistics,
                                    std::uint32_t samplesPerSecond) {
    const std::int32_t reference = statistics.reference;
    QList<StatisticsRow> rows{
        {Tr("Peak:"), {}},           {Tr("Peak value:"), {}}, {Tr("Peak position:"), {}},
        {Tr("Peak frame:"), {}},     {Tr("RMS:"), {}},        {Tr("DC offset:"), {}},
        {Tr("Clipped samples:"), {}}};
    for (unsigned i = 0; i < statistics.channels; ++i) {
        const ChannelStatistics& channel = statistics.channel[i];
        const double seconds = SecondsOf(channel.peakFrame, samplesPerSecond);
        const QStringList values{
            DecibelText(channel.peak, reference), PeakText(channel.peak, reference),
            Utf8Text(TimeText(seconds)),          Counted(channel.peakFrame),
            DecibelText(channel.rms, reference),  PercentText(channel.offset, reference),
            Counted(channel.clippedSamples)};
        for (qsizetype row = 0; row < rows.size(); ++row) rows[row].values << values[row];
    }
    return rows;
}

QList<QStringList> MarkerRows(const Sound& sound) {
    QList<QStringList> rows;
    const std::uint32_t rate = sound.GetSamplesPerSecond();
    for (const Marker& marker : sound.Markers().All())
        rows << QStringList{
            QString::number(marker.id), Utf8Text(TimeText(SecondsOf(marker.position, rate))),
            Counted(marker.position), marker.length > 0 ? Counted(marker.length) : QString(),
            Utf8Text(DisplayText(marker.name))};
    return rows;
}

}  // namespace sonavel
