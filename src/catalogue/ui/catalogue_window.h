// The window "Sample File Database": the catalogues at the left, the sounds of the open one at the
// right, with a filter above and what is counted or went wrong below.
#pragma once

#include <QAction>
#include <QSplitter>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <vector>

#include "catalogue/sample_preview.h"
#include "catalogue/ui/catalogue_filter.h"
#include "catalogue/ui/catalogue_keeper.h"
#include "catalogue/ui/catalogue_list.h"
#include "catalogue/ui/catalogue_status.h"
#include "catalogue/ui/catalogue_table_model.h"
#include "catalogue/ui/catalogue_table_view.h"
#include "platform/headless/silent_prompts.h"
#include "platform/host_services.h"

namespace sonavel {

class CatalogueWindow : public QWidget {
    Q_OBJECT

  public:
    // Opens a sound in the editor; false when it cannot be opened.
    using OpenSound = std::function<bool(const QString& absolutePath)>;

    // The services must outlive the window. It opens the catalogue that was open last.
    CatalogueWindow(const HostServices& services, OpenSound openSound, QWidget* parent = nullptr);
    ~CatalogueWindow() override;

    // Shows the window in front of the others; catalogues and fields are read again.
    void Present();
    // Files and folders; a first catalogue is made when there is none.
    void AddPaths(const QStringList& paths);
    // For the missing sound in the current row.
    void LocateAt(const QString& path);
    // Names between commas.
    void DefineFields(const QString& names);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // catalogue_window.cpp: the window as a whole
    void ConnectParts();
    void OpenCatalogue(const QString& name);
    void Reload();
    void ShowCurrent();
    void UpdateActions();
    void UpdateCounts();
    bool EnsureCatalogue();
    void RestorePlace();
    void StorePlace();

    // catalogue_window_layout.cpp: what it is made of
    void Build();
    void MakeActions();
    QAction* AddAction(const char* icon, const QString& text, const QString& hint,
                       const QKeySequence& key, void (CatalogueWindow::*run)());
    QLayout* MakeButtons();
    void MakeTable();
    void MakeFilter();

    // catalogue_window_commands.cpp: what the person can do with the sounds
    void AddFiles();
    void AddFolder();
    void RemoveSelected();
    void PlayOrStop();
    void PlayCurrent();
    void PlayAsChosen();
    void OpenSelected();
    void ShowFolder();
    void Locate();
    void CheckAgain();
    void EditFields();
    QString PathOf(std::size_t entry);
    void AfterAdding(const AddedSamples& result);

    HostServices services_;
    OpenSound openSound_;
    CatalogueKeeper keeper_;
    SilentPrompts prompts_;
    SamplePreview preview_;
    CatalogueTableModel model_;

    QSplitter* splitter_ = nullptr;
    CatalogueList* list_ = nullptr;
    CatalogueTableView* table_ = nullptr;
    CatalogueFilter* filter_ = nullptr;
    CatalogueStatus* status_ = nullptr;
    QAction* remove_ = nullptr;
    QAction* play_ = nullptr;
    QAction* open_ = nullptr;
    QAction* showFolder_ = nullptr;
    QAction* locate_ = nullptr;
    QAction* check_ = nullptr;
    std::vector<QAction*> buttons_;
    bool adding_ = false;
};

}  // namespace sonavel
