// What the 3D editors have in common: the scene, the numbers of the selected point, the presets,
// and the ball that moves with what is heard. An editor adds how its points are chosen.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <optional>
#include <vector>

#include "effects/ui/preview_dialog.h"
#include "spatial/live_placing.h"
#include "spatial/spatializer.h"
#include "spatial/ui/path_box.h"
#include "spatial/ui/point_numbers.h"
#include "spatial/ui/preset_bar.h"
#include "spatial/ui/scene_content.h"
#include "spatial/ui/scene_widget.h"
#include "spatial/ui/smooth_box.h"
#include "spatial/ui/source_motion.h"
#include "spatial/ui/spatial_memory.h"

namespace sonavel {

class SpatialDialog : public PreviewDialog {
    Q_OBJECT

  public:
    struct Texts {
        QString title;
        QString instruction;             // the header line
        std::string_view progressTitle;  // one of spatial_title
        std::string_view titlePrefix;    // of a new document made from the preview
    };

    ~SpatialDialog() override;

    // Where the source is: its one point, or the corners of its path. Empty while no point is
    // there.
    virtual std::vector<SourcePosition> Path() const = 0;
    // When it is at them, as in a placing.
    virtual std::vector<std::optional<double>> Times() const { return {}; }

    // The source as it is now. To be heard it needs a point.
    Placing Placed() const;

    SmoothBox& Heard() { return *heard_; }
    SceneWidget& Scene() { return *scene_; }
    PointNumbers& Numbers() { return *numbers_; }

    // Remembers what was chosen, too.
    void done(int result) override;

  protected:
    SpatialDialog(CSoundView& view, SpatialMemory& memory, SourceMotion motion, const Texts& texts,
                  PointNumbers::Editing editing, QWidget* parent);

    // The last step of an editor's constructor: puts its chooser, and its presets, beside the
    // scene.
    PresetBar& Begin(QWidget& chooser, PresetStore store);
    // To be called whenever the points change; `selected` is the index of the point whose numbers
    // are shown, -1 for none.
    void ShowPoints(SceneContent content, int selected);

    virtual void Remember() = 0;

    // Null for a source at rest.
    PathBox* Way() { return way_; }
    SourceMotion Motion() const { return motion_; }
    QString CurrentPreset() const { return presets_->Current(); }
    const ProgramFolder& Folder() const { return Document().Services().folder; }

    Outcome Run(Purpose purpose) override;
    std::unique_ptr<LiveMaker> MakeLive() override;
    void OnSilent() override {
        if (!live_) HideBall();
    }

  private:
    QLayout* MakeButtons();
    void MakeWay();
    Placing ChosenWay() const;
    QStringList Notes() const;
    FrameRange HeardRange() const;
    double SecondsOfRange() const;
    void SetLive();
    void FollowLive(double share);
    void FollowPreview(double share);
    void MoveBall();
    void HideBall();

    SpatialMemory& shared_;
    SourceMotion motion_;
    std::string_view progressTitle_;
    SceneWidget* scene_;
    PointNumbers* numbers_;
    SmoothBox* heard_;
    PathBox* way_ = nullptr;  // null for a source at rest
    PresetBar* presets_ = nullptr;
    QVBoxLayout* side_;
    QPushButton* ok_ = nullptr;
    SceneContent content_;  // as the editor gave it, its path straight
    int selected_ = -1;
    Course previewed_;
    LivePlacing* live_ = nullptr;  // while Live plays
    Course liveCourse_;
    double heardShare_ = 0;  // as the player told last
    QElapsedTimer sinceHeard_;
    QTimer ballTimer_;
};

}  // namespace sonavel
