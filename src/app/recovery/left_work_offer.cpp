#include "app/recovery/left_work_offer.h"

#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <new>
#include <vector>

#include "app/recovery/left_work_dialog.h"
#include "platform/beside.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/headless_wave_devices.h"
#include "platform/headless/memory_clipboard.h"
#include "platform/headless/silent_prompts.h"
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

LeftWorkRow RowOf(const LeftWork& work, const QImage& picture) {
    LeftWorkRow row;
    if (!picture.isNull()) row.waveform = QPixmap::fromImage(picture);
    row.isReadable = work.isReadable;
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

QImage PictureOfLeftWork(const LeftWork& work, const HostServices& services, const QSize& size) {
    if (!work.isReadable || work.frames > kMostFramesOfPicture || work.bytes > kMostBytesOfPicture)
        return {};
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
    QImage picture(size, QImage::Format_RGB32);
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

namespace {

// What was found, with the pictures; made on a thread of its own.
class LeftWorkFinder {
  public:
    LeftWorkFinder(const std::filesystem::path& folder, const HostServices& services,
                   double pixelRatio)
        : folder_(folder), services_(services), pixelRatio_(pixelRatio) {}

    void Find(const std::atomic<bool>& cancelled) {
        try {
            left = recovery::ListLeftWork(folder_, cancelled);
            for (const LeftWork& work : left)
                pictures.push_back(cancelled ? QImage() : Picture(work));
        } catch (const std::bad_alloc&) {
            pictures.resize(static_cast<qsizetype>(left.size()));
        }
    }

    std::vector<LeftWork> left;
    QList<QImage> pictures;

  private:
    // Nothing of the window is asked, and nobody is.
    QImage Picture(const LeftWork& work) const {
        SilentPrompts prompts;
        HeadlessProgress progress;
        MemoryClipboard clipboard;
        HeadlessWaveDevices devices(WavePace::kAsFastAsAsked);
        QImage picture = PictureOfLeftWork(
            work, {prompts, progress, clipboard, devices, services_.folder, services_.codecs},
            kPictureSize * pixelRatio_);
        picture.setDevicePixelRatio(pixelRatio_);
        return picture;
    }

    const std::filesystem::path& folder_;
    const HostServices& services_;
    double pixelRatio_;
};

}  // namespace

Outcome OfferLeftWork(const std::filesystem::path& folder, Workspace& workspace, QWidget* parent,
                      const std::function<void()>& beforeAsking) {
    LeftWorkFinder found(folder, workspace.Services(), parent->devicePixelRatioF());
    {
        const auto window = workspace.Services().progress.CreateProgress("Unsaved Work");
        const auto find = [&](const std::atomic<bool>& cancelled) { found.Find(cancelled); };
        if (!DoBeside(*window, find)) return Cancelled();
    }
    const std::vector<LeftWork>& left = found.left;
    if (left.empty()) return Done();
    std::vector<LeftWorkRow> rows;
    for (std::size_t i = 0; i < left.size(); ++i)
        rows.push_back(RowOf(left[i], found.pictures[static_cast<qsizetype>(i)]));
    beforeAsking();
    LeftWorkDialog dialog(rows, parent);
    dialog.exec();
    const std::vector<LeftWorkChoice> choices = dialog.Choices();
    Outcome all = Done();
    for (std::size_t i = 0; i < left.size(); ++i)
        if (Outcome done = Do(choices[i], left[i], workspace); !done) all = done;
    return all;
}

}  // namespace sonavel
