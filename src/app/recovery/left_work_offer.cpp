#include "app/recovery/left_work_offer.h"

#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <vector>

#include "app/recovery/left_work_dialog.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"
#include "recovery/replay.h"
#include "sound/sound_texts.h"
#include "view/draw/block_extremes.h"

namespace sonavel {
namespace {

using recovery::LeftWork;

constexpr QSize kPictureSize{120, 32};
// Longer sounds would hold up the start.
constexpr std::uint32_t kMostFramesOfPicture = 30'000'000;
constexpr std::uint64_t kMostBytesOfPicture = std::uint64_t{256} << 20;

LeftWorkRow RowOf(const LeftWork& work, const HostServices& services) {
    LeftWorkRow row;
    row.waveform = PictureOfLeftWork(work, services, kPictureSize);
    row.name = Utf8Text(work.title);
    if (!work.path.empty()) row.path = ShownFileText(FileText(work.path));
    const QDateTime time = QDateTime::fromSecsSinceEpoch(work.lastChangeSeconds);
    row.time = QLocale().toString(time, QLocale::ShortFormat);
    const double rate = work.samplesPerSecond;
    row.length = rate > 0 ? Utf8Text(TimeText(work.frames / rate)) : QString();
    row.edits = work.edits;
    return row;
}

Outcome Do(LeftWorkChoice choice, const LeftWork& work, Workspace& workspace) {
    switch (choice) {
        case LeftWorkChoice::kRecover:
            return workspace.RecoverDocument(work);
        case LeftWorkChoice::kDiscard:
            return DoneIf(DiscardLeftWork(work), "The records could not be removed.");
        case LeftWorkChoice::kLater:
            break;
    }
    return Done();
}

}  // namespace

QPixmap PictureOfLeftWork(const LeftWork& work, const HostServices& services, const QSize& size) {
    if (work.frames > kMostFramesOfPicture || work.bytes > kMostBytesOfPicture) return {};
    CSoundDoc document(services);
    if (!recovery::ReplayInto(document, work.folder)) return {};
    if (!recovery::ReplayTake(document, work.folder) || !document.Sound().HasData()) return {};
    BlockExtremes extremes;
    extremes.Rebuild(document.Sound(), 0);
    const double highest = document.Sound().GetBits() == 8    ? 128
                           : document.Sound().GetBits() == 16 ? 32768
                                                              : 8388608;
    const double half = size.height() / 2.0;
    const std::int64_t frames = document.Sound().GetFrameCount();
    QPixmap picture(size);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setPen(Qt::green);
    for (int x = 0; x < size.width(); ++x) {
        const std::int64_t start = frames * x / size.width();
        const std::int64_t end = std::max(start + 1, frames * (x + 1) / size.width());
        const SampleExtremes at = extremes.Over(0, start, end);
        painter.drawLine(QPointF(x, half - at.maximum / highest * half),
                         QPointF(x, half - at.minimum / highest * half));
    }
    return picture;
}

Outcome OfferLeftWork(const std::filesystem::path& folder, Workspace& workspace, QWidget* parent) {
    const std::vector<LeftWork> left = recovery::ListLeftWork(folder);
    if (left.empty()) return Done();
    std::vector<LeftWorkRow> rows;
    rows.reserve(left.size());
    for (const LeftWork& work : left) rows.push_back(RowOf(work, workspace.Services()));
    LeftWorkDialog dialog(rows, parent);
    dialog.exec();
    const std::vector<LeftWorkChoice> choices = dialog.Choices();
    Outcome all = Done();
    for (std::size_t i = 0; i < left.size(); ++i)
        if (Outcome done = Do(choices[i], left[i], workspace); !done) all = done;
    return all;
}

}  // namespace sonavel
