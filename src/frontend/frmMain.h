#pragma once

#include <QMessageBox>
#include <QString>
#include <QUrl>
#include <QWidget>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "frontend/CancelGate.h"
#include "frontend/FolderPicker.h"
#include "frontend/WindowState.h"
#include "model/RunState.h"
#include "platform/DriveMap.h"
#include "run/IniFile.h"
#include "run/UpdateRun.h"

class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace skl::frontend {

class WindowFrontEnd;

// How the window was started.
struct WindowOptions {
    // Native program folder: the ini file, the logs, the database sets and the
    // help page lie under it.
    QString ProgramFolder;
    // Drive letters given by the user (X=DIR), added to Z: and the Wine prefix's.
    std::vector<platform::DriveMapping> Mappings;
    // The Wine prefix whose drive letters are listed before a simulator folder
    // is chosen (empty: none).
    QString WinePrefix;
};

// The one window of the tool. It implements the front end of the run, which
// runs on a worker thread so that the window keeps repainting: the worker's
// calls are queued to the window, a message box blocks the worker until it is
// answered, and the cancel question is asked here while the worker waits at its
// cancel point for the answer. Its member functions are defined in frmMain.cpp
// (construction and layout), frmMainPickers.cpp, frmMainIni.cpp and frmMainRun.cpp
// (the run on the worker thread and its cancel).
class frmMain : public QWidget {
    Q_OBJECT

  public:
    // Shows a message box and returns the button pressed.
    using AskFunction = std::function<QMessageBox::StandardButton(
        QWidget* parent, const QString& text, QMessageBox::StandardButtons buttons,
        QMessageBox::Icon icon, const QString& title)>;
    // Hands a file to the desktop's default handler.
    using OpenFunction = std::function<bool(const QUrl& url)>;
    // Ends the process once the window has unloaded after an abort.
    using EndFunction = std::function<void(int exitCode)>;

    explicit frmMain(WindowOptions options, QWidget* parent = nullptr);
    ~frmMain() override;

    // Sets the labels, reads the ini file and presets the simulator picker.
    void Form_Load();

    void SetAskFunction(AskFunction ask) { ask_ = std::move(ask); }
    void SetOpenFunction(OpenFunction open) { open_ = std::move(open); }
    void SetEndFunction(EndFunction end) { end_ = std::move(end); }
    // Called by the worker at each cancel point before it looks for an answer.
    void SetCancelPointObserver(std::function<void()> observer);

    bool RunUnderWay() const { return running_; }
    const IniSettings& Settings() const { return ini_; }
    const Selection& CurrentSelection() const { return state_->Selection; }
    FolderPicker* SimulatorPicker() const { return simulatorPicker_; }
    FolderPicker* LibraryPicker() const { return libraryPicker_; }

    void cmdWorld_Click();
    void cmdCancel_Click();
    void cmdExit_Click();
    void cmdHelp_Click();
    void dirFS_Change();
    void dirScenLib_Change();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    friend class WindowFrontEnd;

    void BuildControls();
    void Form_Unload();
    void ValidateSelection();
    void ApplyOutcome(const OutcomeView& view);
    void ApplyControls();
    void AddDrives(const platform::DriveMap& drives);
    std::string WindowsFolder(const platform::DriveMap& drives, const QString& nativeFolder) const;
    // Asks the cancel question. `evenWithoutCancelPoint` asks it also when the
    // run has passed its last cancel point (closing the window does). True on Yes.
    bool AskCancelQuestion(bool evenWithoutCancelPoint);
    void StartWorker();
    void OnRunEnded(std::optional<RunEnd> end);

    // The front end's operations, on the window thread.
    void ShowStatus(const std::string& text);
    void ShowPercent(double percent);
    void ShowBar(bool visible);
    MessageAnswer ShowMessage(const std::string& text, MessageButtons buttons,
                              const std::string& title);
    void RunEnablesUpdate(bool enabled);
    void RunEnablesCancel(bool enabled);

    WindowOptions options_;
    platform::DriveMap startDrives_;
    std::unique_ptr<RunState> state_;
    IniSettings ini_;
    bool libraryPreset_ = false;
    bool unloaded_ = false;

    Controls controls_;
    Controls beforeRun_;
    std::optional<bool> updateRequest_;
    bool running_ = false;
    bool closeAfterRun_ = false;
    CancelGate gate_;
    std::unique_ptr<WindowFrontEnd> frontEnd_;
    std::thread worker_;
    std::atomic<bool> workerDone_{true};
    std::atomic<bool> abandoned_{false};

    AskFunction ask_;
    OpenFunction open_;
    EndFunction end_;

    QLabel* label1_ = nullptr;
    QLabel* label2_ = nullptr;
    QLabel* build_ = nullptr;
    QLabel* lblExplain_ = nullptr;
    QProgressBar* showBar_ = nullptr;
    QGroupBox* frame1_ = nullptr;
    QLabel* lblDirFS_ = nullptr;
    QLabel* lblDirScenLib_ = nullptr;
    FolderPicker* simulatorPicker_ = nullptr;
    FolderPicker* libraryPicker_ = nullptr;
    QLabel* lblInvalidPath_ = nullptr;
    QLabel* lblMessage_ = nullptr;
    QPushButton* cmdWorld_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QPushButton* cmdExit_ = nullptr;
    QPushButton* cmdHelp_ = nullptr;
};

// The Wine prefix named by WINEPREFIX, else ~/.wine, when it is one.
QString DefaultWinePrefix();

}  // namespace skl::frontend
