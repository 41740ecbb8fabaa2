// The view's dialogs as Qt windows.
#pragma once

#include <QPointer>
#include <QWidget>

#include "view/commands/view_dialogs.h"

namespace sonavel {

class QtViewDialogs : public ViewDialogs {
  public:
    // The dialogs stand over `parent`, which may be null.
    explicit QtViewDialogs(QWidget* parent) : parent_(parent) {}

    std::optional<UserZoom> AskUserZoom(const UserZoom& initial) override;
    std::optional<MixChoice> AskMix(const MixRange& range, const MixChoice& initial) override;
    std::optional<CrossfadeChoice> AskCrossfade(const MixRange& range,
                                                const CrossfadeChoice& initial) override;
    std::optional<int> AskReplicateCount(int initial) override;
    std::optional<GoToChoice> AskGoTo(const GoToRequest& request) override;
    std::optional<std::vector<MarkerEdit>> EditMarkers(const MarkerDialogRequest& request) override;
    void ShowClipboardContents(const ClipboardContents& contents,
                               ClipboardPreview& preview) override;
    std::optional<RecordChoice> AskRecord(const RecordRequest& request) override;

  private:
    QPointer<QWidget> parent_;
};

}  // namespace sonavel
