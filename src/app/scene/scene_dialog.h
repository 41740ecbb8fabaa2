// The window "Scene": several sounds around the listener, each with its point or path, its start
// and its gain, which become one new stereo sound.
#pragma once

#include <QMenu>
#include <optional>

#include "app/scene/scene_table.h"
#include "effects/ui/preview_dialog.h"
#include "spatial/live_scene.h"
#include "spatial/ui/path_box.h"
#include "spatial/ui/scene_widget.h"
#include "spatial/ui/smooth_box.h"
#include "spatial/ui/spatial_memory.h"
#include "spatial/ui/user_point_list.h"

namespace sonavel {

class SceneDialog : public PreviewDialog {
    Q_OBJECT

  public:
    // Previews play as the view's sound does, at its rate.
    SceneDialog(CSoundView& view, const Workspace& sounds, SpatialMemory& memory,
                std::vector<script::SceneEntry> entries, QWidget* parent);
    ~SceneDialog() override;

    const std::vector<script::SceneEntry>& Entries() const { return entries_; }
    // What Apply() has made.
    std::optional<Sound>& Mixed() { return mixed_; }
    SceneWidget& Scene() { return *scene_; }

    // Told to the person where they fail.
    void LoadScene(const std::filesystem::path& path);
    void SaveScene(const std::filesystem::path& path);

  protected:
    Outcome Run(Purpose purpose) override;
    void OnSilent() override {
        if (!live_) scene_->SetBall(std::nullopt);
    }
    std::unique_ptr<LiveMaker> MakeLive() override;

  private:
    // A ball of the scene: of which sound, and which of its points.
    struct Ball {
        int entry = 0;
        int point = 0;
    };

    QLayout* MakeSide();
    QLayout* MakeSoundButtons();
    QLayout* MakeButtons();
    void AddLiveButton(QHBoxLayout& row);
    void FillAddMenu();
    void Add(script::SceneEntry entry);
    void AddFile();
    void RemoveCurrent();
    void AskLoad();
    void AskSave();
    QString FolderShown() const;
    void Choose(int entry);
    void ShowEntry();
    void TakeEntry();
    void AskShape();
    void ShowScene();
    void AddToScene(int entry, SceneContent& content);
    void DragBall(int ball, const SourcePosition& position);
    void MoveBall(double share);
    // Of the chosen sound, at a share of what is played; null while it is not heard.
    std::optional<SourcePosition> PlaceHeard(double share) const;
    bool IsComplete() const;
    void SetLive();
    void BeginLiveAnew();
    void TakeTimes(int entry, double startSeconds, double gain);
    script::SceneEntry& Current() { return entries_[static_cast<std::size_t>(current_)]; }
    const script::SceneEntry& Current() const {
        return entries_[static_cast<std::size_t>(current_)];
    }

    const Workspace& sounds_;
    SpatialMemory& memory_;
    std::vector<script::SceneEntry> entries_;
    int current_ = -1;
    bool showing_ = false;  // the fields are being filled, not edited
    std::vector<Ball> balls_;
    std::optional<Sound> mixed_;
    double heardSeconds_ = 0;    // how long what is played last lasts
    LiveScene* live_ = nullptr;  // while Live plays

    SceneWidget* scene_;
    SceneTable* table_;
    UserPointList* points_;
    PathBox* way_;
    SmoothBox* heard_;
    QMenu* addMenu_;
    QPushButton* remove_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* ok_ = nullptr;
};

}  // namespace sonavel
