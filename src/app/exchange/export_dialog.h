// The dialog in which a sound is exported: where to, in which kind of file, with which tags, how
// large that becomes and what it loses.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <filesystem>
#include <functional>
#include <vector>

#include "exchange/sound_export.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

struct ExportAnswer {
    std::filesystem::path path;
    SoundFileKind kind = SoundFileKind::kWav;
    EncodedDepth depth = EncodedDepth::k16;  // of kinds that are not lossy
    std::uint32_t quality = 5;               // of those that are
    ExportPart markers = ExportPart::kWrite;
    ExportPart tags = ExportPart::kWrite;
    std::vector<SoundTag> tagValues;  // those that were edited and all others of the sound
};

// What an export of this answer would do; where `refusal` says something it cannot be done.
struct ExportNotice {
    std::uint64_t estimatedBytes = 0;
    QStringList losses;
    QString refusal;
};
using ExportNoticeSource = std::function<ExportNotice(const ExportAnswer&)>;

struct ExportQuestion {
    QString title;
    std::filesystem::path own{};  // of the sound, never proposed; empty for none
    ExportAnswer proposed;
    // Those that a kind of file can hold, the best first; none for a lossy one.
    std::function<std::vector<EncodedDepth>(SoundFileKind)> depthsOf;
    ExportNoticeSource notice;
};

// ".flac"; the kinds in the order in which they are offered.
struct ExportKind {
    SoundFileKind kind;
    const char* extension;
};
std::vector<ExportKind> ExportKinds();

class ExportDialog : public FormDialog {
    Q_OBJECT

  public:
    ExportDialog(ExportQuestion question, QWidget* parent = nullptr);
    ExportAnswer Answer() const;

    // Asks before a file is replaced.
    void accept() override;

  private:
    void AddFile();
    void AddFormat();
    void AddTags();
    void AddNotice();
    void ChooseFile();
    void TakeKind();
    // Never the own file of the sound.
    void Propose(const QString& path);
    void TakeTypedPath();
    void ShowNotice();
    SoundFileKind Kind() const;

    ExportQuestion question_;
    QLineEdit* path_ = nullptr;
    QComboBox* kind_ = nullptr;
    QComboBox* depth_ = nullptr;
    QSpinBox* quality_ = nullptr;
    QCheckBox* markers_ = nullptr;
    QCheckBox* tags_ = nullptr;
    std::vector<QLineEdit*> tagEdits_;
    QLabel* size_ = nullptr;
    QLabel* losses_ = nullptr;
};

}  // namespace sonavel
