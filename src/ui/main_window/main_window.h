#pragma once

#include <QMainWindow>
#include <QString>
#include <functional>
#include <string>
#include <memory>
#include <optional>
#include <vector>

#include "editing/config_editor.h"
#include "ui/main_window/control_bindings.h"

class QAction;
class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QTabWidget;
class QTimer;

namespace nbx {
class Station;
class IniSettings;

// NBXNimbometerForm: the main window. It shows the station's records and
// edits the configuration in use through the settings-editing layer; it
// computes nothing the logic computes. Its parts live in files named after
// them: the menus and panels here, each tab in a file of its own.
class NBXNimbometerForm : public QMainWindow {
  Q_OBJECT

 public:
  NBXNimbometerForm(Station& station, IniSettings& store, QWidget* parent = nullptr);
  ~NBXNimbometerForm() override;

  // The load: the records (already read from the store) into the controls,
  // the window's place and tabs, and last the first-start step 10 ms later.
  void Load();
  // The unload: the settings written back. False while clients are attached.
  bool Unload();
  // A port that lives for this run only (the simulated box's): the unload
  // writes `stored` in its place.
  void KeepStoredPort(const std::string& stored) { storedPortName_ = stored; }

  // Brings every control to the records: after each cycle, each edit, and on
  // the window's beat, so that what the logic or a client changes shows.
  void Render();
  void RefreshMenus();
  void SetSetupEnabled(bool enabled);
  // "NBX_Nimbometer (v7.00.000)", with "REMOTE " ahead for a remote.
  static QString FormTitle(const Nimbometer& nm);
  bool FormLoading() const { return formLoading_; }

  // Steps 9 and 10 of the first start: the last update's status and the
  // automatic Start and recording. The first-run dialogue, where there is
  // one, calls it once the role and port are known.
  void RunAutoStart();
  // The Stop action followed by the unload and the end of the program, as
  // the close button and "Exit" ask; refused while clients are attached.
  void ExitProgram();
  // The help context of F1: 2001 plus the main tab, the setup and device
  // tabs with their sub-tab.
  int HelpContext() const;

  IniSettings& store() const { return store_; }
  QTabWidget* mainTabs() const { return sstab1_; }
  QTabWidget* setupTabs() const { return sstab3_; }
  QTabWidget* graphTabs() const { return sstab2_; }

  // Asks for the sound of an alarm entry turned on without one (the dialogs
  // around the window set it); true when the entry has a sound afterwards.
  std::function<bool(QWidget* entry)> chooseSound;

 signals:
  // Hooks for the windows of their own: the first start's dialogue (at the
  // end of the load; without a receiver RunAutoStart runs at once), the
  // output-code legend (right click on StatusBar2), the temperature factor
  // window (right click on Label8(24) while running), the manual (F1 and
  // "Contents ..." with the help context), and the about box.
  void firstStartRequested();
  void legendRequested();
  void factorWindowRequested();
  void helpRequested(int context);
  void aboutRequested();
  // The update window ("Check for updates ...").
  void updateRequested();
  // The user data file's column table ("File Structure").
  void fileStructureRequested();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  void BuildMenus();
  QWidget* BuildRunPanel();
  QWidget* BuildBottomRow();
  QWidget* BuildSensorTab();
  QWidget* BuildGraphsTab();
  QWidget* BuildLimitsTab();
  QWidget* BuildUnsafeTab();
  QWidget* BuildSetupTab();
  QWidget* BuildSetupDevice();
  QWidget* BuildSetupGraph();
  QWidget* BuildSetupAlarm();
  QWidget* BuildSetupNetwork();
  QWidget* BuildAlpacaBlock();
  bool AskSound(const QString& entry) { return chooseSound && chooseSound(findChild<QWidget*>(entry)); }
  QWidget* BuildSetupScript();
  QWidget* BuildDeviceTab();
  QScrollArea* Scrolling(QWidget* panel, const QString& name);
  // A caption label beside a control, given the control as its buddy so
  // that the control is named by the caption for assistive technology.
  QLabel* Caption(QWidget* parent, const QString& text, QWidget* buddy);
  void ApplyRole();
  void RenderExtras();
  void PaintGraphs();

  Station& station_;
  IniSettings& store_;
  std::optional<std::string> storedPortName_;
  ConfigEditor editor_;
  ControlBindings bind_;
  bool formLoading_ = false;
  bool exiting_ = false;
  bool helpFromMenu_ = false;
  bool setupEnabled_ = true;

  QAction *mnuStart_ = nullptr, *mnuStop_ = nullptr, *mnuExit_ = nullptr;
  QTabWidget *sstab1_ = nullptr, *sstab2_ = nullptr, *sstab3_ = nullptr;
  QScrollArea* setupScroll_ = nullptr;
  QTimer* beat_ = nullptr;
  std::vector<QLabel*> graphs_;
  std::vector<QWidget*> windTitles_;
  // The check boxes of the "Unsafe" tab: their words and colours come from the logic.
  struct CheckCaption {
    QCheckBox* box;
    const Label* word;
    const Colour* backColour;
  };
  std::vector<CheckCaption> checkCaptions_;
  // Labels that show a text of the configuration (folders, file names).
  std::vector<std::pair<QLabel*, std::function<std::string(const Config&)>>> textRefresh_;
  std::function<void()> portRefresh_;
  QLabel* controlOwner_ = nullptr;
  // FileName, ButtPATH, SaveFreq, ButtFileStructure, chkDebug, LastReadOnly:
  // locked while a recording runs.
  std::vector<QWidget*> recordControls_;
  // The unit labels of the limits: true for temperature, false for speed.
  std::vector<std::pair<QLabel*, bool>> unitLabels_;
  // The controls of the run that the setup lock covers, and those a remote hides.
  std::vector<QWidget*> setupGroup_;
  std::vector<QWidget*> masterOnly_;
  std::vector<std::pair<QLabel*, QString>> masterCaptions_;
};

}  // namespace nbx
