#include "frontend/frmMain.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

#include "frontend/HelpPage.h"
#include "platform/DriveMap.h"
#include "model/RunLog.h"
#include "run/ValidatePaths.h"

namespace skl::frontend {

namespace {

QString Shown(const std::string& text) {
    return QString::fromStdString(DisplayText(text));
}

QString Native(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

void SetColour(QLabel* label, Colour colour) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor::fromRgb(static_cast<QRgb>(colour)));
    label->setPalette(palette);
}

QLabel* NewLabel(const char* name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* NewButton(const char* name, const char* caption, QWidget* parent) {
    auto* button = new QPushButton(QString::fromLatin1(caption), parent);
    button->setObjectName(QLatin1String(name));
    return button;
}

QMessageBox::StandardButton AskWithBox(QWidget* parent, const QString& text,
                                       QMessageBox::StandardButtons buttons, QMessageBox::Icon icon,
                                       const QString& title) {
    QMessageBox box(icon, title, text, buttons, parent);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

// The front end as the run on the worker thread sees it: every call is queued to
// the window, a message box waits for its answer, and the cancel point waits at
// the gate while the cancel question is open.
class WindowFrontEnd : public FrontEnd {
  public:
    explicit WindowFrontEnd(frmMain& window) : window_(window) {}

    void SetStatusText(const std::string& text) override {
        window_.gate_.NoteStatus(text);
        Post([w = &window_, text] { w->ShowStatus(text); });
    }
    void SetProgressPercent(double percent) override {
        Post([w = &window_, percent] { w->ShowPercent(percent); });
    }
    void ShowProgress(bool visible) override {
        Post([w = &window_, visible] { w->ShowBar(visible); });
    }
    bool ProcessEvents() override {
        if (Observer) Observer();
        return window_.gate_.AtCancelPoint();
    }
    MessageAnswer MessageBox(const std::string& text, MessageButtons buttons,
                             const std::string& title) override {
        MessageAnswer answer =
            buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
        if (window_.abandoned_) return answer;
        QMetaObject::invokeMethod(
            &window_, [&] { answer = window_.ShowMessage(text, buttons, title); },
            Qt::BlockingQueuedConnection);
        return answer;
    }
    void EnableUpdate(bool enabled) override {
        Post([w = &window_, enabled] { w->RunEnablesUpdate(enabled); });
    }
    void EnableCancel(bool enabled) override {
        Post([w = &window_, enabled] { w->RunEnablesCancel(enabled); });
    }
    // The window holds exit disabled for the whole run and enables it when the
    // run has ended.
    void EnableExit(bool) override {}
    // The window unloads on the window thread once the run has returned.
    void Unload() override { UnloadRequested = true; }

    std::function<void()> Observer;
    std::atomic<bool> UnloadRequested{false};

  private:
    template <typename Call>
    void Post(Call&& call) {
        if (!window_.abandoned_)
            QMetaObject::invokeMethod(&window_, std::forward<Call>(call), Qt::QueuedConnection);
    }

    frmMain& window_;
};

QString DefaultWinePrefix() {
    QString prefix = qEnvironmentVariable("WINEPREFIX");
    if (prefix.isEmpty()) prefix = QDir::homePath() + QStringLiteral("/.wine");
    std::optional<std::string> found = platform::FindWinePrefix(prefix.toStdString());
    if (!found || QDir::cleanPath(Native(*found)) != QDir::cleanPath(prefix)) return {};
    return Native(*found);
}

frmMain::frmMain(WindowOptions options, QWidget* parent)
    : QWidget(parent),
      options_(std::move(options)),
      state_(std::make_unique<RunState>()),
      frontEnd_(std::make_unique<WindowFrontEnd>(*this)),
      ask_(AskWithBox),
      open_([](const QUrl& url) { return QDesktopServices::openUrl(url); }),
      end_([](int exitCode) { QCoreApplication::exit(exitCode); }) {
    options_.ProgramFolder = QDir::cleanPath(QDir(options_.ProgramFolder).absolutePath());
    const std::string prefix =
        options_.WinePrefix.isEmpty() ? std::string("/") : options_.WinePrefix.toStdString();
    startDrives_ = platform::MakeDriveMap(prefix, options_.Mappings);
    state_->Selection.Drives = startDrives_;
    BuildControls();
    AddDrives(startDrives_);
    // Both pickers stand at the current folder until the user or the ini file
    // moves them; that is no change that validates.
    simulatorPicker_->SetFolder(QDir::currentPath(), true);
    libraryPicker_->SetFolder(QDir::currentPath(), true);
    ApplyControls();
}

frmMain::~frmMain() {
    if (!worker_.joinable()) return;
    // The window goes away during a run: the run cancels at its next cancel
    // point; messages it still shows are answered at once.
    abandoned_ = true;
    gate_.Abandon();
    while (!workerDone_) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    if (worker_.joinable()) worker_.join();
}

void frmMain::SetCancelPointObserver(std::function<void()> observer) {
    frontEnd_->Observer = std::move(observer);
}

void frmMain::BuildControls() {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QString::fromLatin1(kWindowCaption));

    label1_ = NewLabel("Label1", QString::fromLatin1(kTitleText), this);
    QFont titleFont = label1_->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.8);
    titleFont.setBold(true);
    label1_->setFont(titleFont);
    label2_ = NewLabel("Label2", QString::fromLatin1(kSubtitleText), this);
    QFont subtitleFont = label2_->font();
    subtitleFont.setPointSizeF(subtitleFont.pointSizeF() * 1.2);
    label2_->setFont(subtitleFont);
    build_ = NewLabel("Build", QString(), this);
    lblExplain_ = NewLabel("lblExplain", QString(), this);
    lblExplain_->setWordWrap(true);
    lblExplain_->setMinimumHeight(lblExplain_->fontMetrics().lineSpacing() * 3);
    for (QLabel* label : {label1_, label2_, build_, lblExplain_})
        label->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);

    showBar_ = new QProgressBar(this);
    showBar_->setObjectName(QStringLiteral("ShowBar"));
    // The figure is a double: tenths of a percent keep its fraction.
    showBar_->setRange(0, 1000);
    showBar_->setValue(0);
    showBar_->setFormat(QStringLiteral("%p%"));
    QSizePolicy barPolicy = showBar_->sizePolicy();
    barPolicy.setRetainSizeWhenHidden(true);
    showBar_->setSizePolicy(barPolicy);
    showBar_->hide();

    frame1_ = new QGroupBox(QString::fromLatin1(kFrameCaption), this);
    frame1_->setObjectName(QStringLiteral("Frame1"));
    lblDirFS_ = NewLabel("lblDirFS", QString::fromLatin1(kDirFsCaption), frame1_);
    lblDirScenLib_ = NewLabel("lblDirScenLib", QString::fromLatin1(kDirScenLibCaption), frame1_);
    simulatorPicker_ = new FolderPicker(QStringLiteral("drvFS"), QStringLiteral("dirFS"), frame1_);
    libraryPicker_ =
        new FolderPicker(QStringLiteral("drvScenLib"), QStringLiteral("dirScenLib"), frame1_);
    for (FolderPicker* picker : {simulatorPicker_, libraryPicker_})
        picker->setMinimumSize(230, 260);
    lblInvalidPath_ =
        NewLabel("lblInvalidPath", QString::fromLatin1(kInvalidPathDesignText), frame1_);
    lblMessage_ = NewLabel("lblMessage", QString(), frame1_);
    for (QLabel* label : {lblInvalidPath_, lblMessage_}) {
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setMinimumWidth(200);
    }
    QFont invalidFont = lblInvalidPath_->font();
    invalidFont.setBold(true);
    lblInvalidPath_->setFont(invalidFont);
    SetColour(lblInvalidPath_, Colour::Red);
    SetColour(lblMessage_, Colour::Blue);
    cmdWorld_ = NewButton("cmdWorld", kUpdateDesignCaption, frame1_);
    cmdWorld_->setMinimumHeight(cmdWorld_->fontMetrics().lineSpacing() * 3);

    auto* frameLayout = new QGridLayout(frame1_);
    frameLayout->addWidget(lblDirFS_, 0, 0);
    frameLayout->addWidget(simulatorPicker_, 1, 0);
    frameLayout->addWidget(lblDirScenLib_, 0, 1);
    frameLayout->addWidget(libraryPicker_, 1, 1);
    auto* messages = new QVBoxLayout();
    messages->addWidget(lblInvalidPath_);
    messages->addSpacing(8);
    messages->addWidget(lblMessage_);
    messages->addStretch(1);
    messages->addWidget(cmdWorld_);
    frameLayout->addLayout(messages, 0, 2, 2, 1);
    frameLayout->setColumnStretch(0, 1);
    frameLayout->setColumnStretch(1, 1);

    cmdCancel_ = NewButton("cmdCancel", kCancelCaption, this);
    cmdExit_ = NewButton("cmdExit", kExitCaption, this);
    cmdHelp_ = NewButton("cmdHelp", kHelpCaption, this);
    auto* buttons = new QHBoxLayout();
    buttons->addStretch(1);
    for (QPushButton* button : {cmdCancel_, cmdExit_, cmdHelp_}) {
        button->setMinimumWidth(100);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label1_);
    layout->addWidget(label2_);
    layout->addWidget(build_);
    layout->addWidget(lblExplain_);
    layout->addWidget(showBar_);
    layout->addWidget(frame1_, 1);
    layout->addLayout(buttons);

    controls_ = Controls{};
    // An error in an event procedure is ignored: the window stays usable.
    auto quietly = [this](void (frmMain::*procedure)()) {
        return [this, procedure] {
            try {
                (this->*procedure)();
            } catch (...) {
            }
        };
    };
    connect(cmdWorld_, &QPushButton::clicked, this, quietly(&frmMain::cmdWorld_Click));
    connect(cmdCancel_, &QPushButton::clicked, this, quietly(&frmMain::cmdCancel_Click));
    connect(cmdExit_, &QPushButton::clicked, this, quietly(&frmMain::cmdExit_Click));
    connect(cmdHelp_, &QPushButton::clicked, this, quietly(&frmMain::cmdHelp_Click));
    connect(simulatorPicker_, &FolderPicker::FolderChanged, this, quietly(&frmMain::dirFS_Change));
    connect(libraryPicker_, &FolderPicker::FolderChanged, this,
            quietly(&frmMain::dirScenLib_Change));
    resize(820, 600);
}

void frmMain::AddDrives(const platform::DriveMap& drives) {
    std::vector<PickerDrive> listed;
    for (size_t i = 0; i < drives.Folders.size(); ++i) {
        if (drives.Folders[i].empty()) continue;
        listed.push_back({static_cast<char>('A' + i), Native(drives.Folders[i])});
    }
    simulatorPicker_->AddDrives(listed);
    libraryPicker_->AddDrives(listed);
}

std::string frmMain::WindowsFolder(const platform::DriveMap& drives,
                                   const QString& nativeFolder) const {
    if (nativeFolder.isEmpty()) return {};
    std::optional<std::string> windows = platform::ToWindows(drives, nativeFolder.toStdString());
    if (!windows) return {};
    std::string folder = *windows;
    if (folder.size() > 3 && folder.back() == '\\') folder.pop_back();
    return folder;
}

void frmMain::Form_Load() {
    label1_->setText(QString::fromLatin1(kTitleText));
    build_->setText(QString::fromLatin1(kVersionLine));
    lblExplain_->setText(QString::fromLatin1(kExplanationText));
    libraryPreset_ = false;
    Selection& selection = state_->Selection;
    selection.SimulatorFolder.clear();
    selection.CfgFolder.clear();
    selection.ProgramFolder = WindowsFolder(startDrives_, options_.ProgramFolder);
    ini_ = ReadIniFile(options_.ProgramFolder.toStdString(), startDrives_);
    // A stored folder on a drive that is gone leaves the picker where it is.
    const std::string preset = PresetPath(ini_);
    if (!preset.empty()) {
        const std::string native = platform::ToNative(startDrives_, preset);
        if (!native.empty()) simulatorPicker_->SetFolder(Native(native), false, preset.front());
    }
}

void frmMain::Form_Unload() {
    if (unloaded_) return;
    unloaded_ = true;
    try {
        WriteIniFile(options_.ProgramFolder.toStdString(), ini_);
    } catch (...) {
        // Unloading goes on whatever the ini file does.
    }
}

void frmMain::dirFS_Change() {
    ValidateSelection();
}

void frmMain::dirScenLib_Change() {
    ValidateSelection();
}

void frmMain::ValidateSelection() {
    if (running_) return;
    Selection& selection = state_->Selection;
    const QString simulator = simulatorPicker_->Folder();
    selection.Drives = platform::MakeDriveMap(simulator.toStdString(), options_.Mappings);
    AddDrives(selection.Drives);
    selection.ProgramFolder = WindowsFolder(selection.Drives, options_.ProgramFolder);

    PathPickers pickers;
    pickers.SimulatorFolder = WindowsFolder(selection.Drives, simulator);
    pickers.LibraryFolder = WindowsFolder(selection.Drives, libraryPicker_->Folder());
    pickers.NetworkDrive = platform::IsNetworkFolder(simulator.toStdString());
    pickers.LibraryPreset = libraryPreset_;
    const std::string library = pickers.LibraryFolder;
    Validation validation = ValidatePaths(selection, pickers);
    libraryPreset_ = pickers.LibraryPreset;
    // The right picker follows where validation moved it; validation has
    // already judged that folder, so it does not run again.
    if (pickers.LibraryFolder != library) {
        const std::string native = platform::ToNative(selection.Drives, pickers.LibraryFolder);
        if (!native.empty())
            libraryPicker_->SetFolder(Native(native), true, pickers.LibraryFolder.front());
    }
    StoreSelection(ini_, validation);
    ApplyOutcome(ViewOfOutcome(validation));
}

void frmMain::ApplyOutcome(const OutcomeView& view) {
    lblInvalidPath_->setText(Shown(view.InvalidPathText));
    lblMessage_->setText(Shown(view.MessageText));
    if (view.MessageColour) SetColour(lblMessage_, *view.MessageColour);
    cmdWorld_->setText(Shown(view.UpdateCaption));
    SetColour(lblDirScenLib_, view.LibraryLabelColour);
    controls_.Update = view.UpdateEnabled;
    controls_.LibraryPicker = view.LibraryPickerEnabled;
    ApplyControls();
}

void frmMain::ApplyControls() {
    cmdWorld_->setEnabled(controls_.Update);
    cmdCancel_->setEnabled(controls_.Cancel);
    cmdExit_->setEnabled(controls_.Exit);
    simulatorPicker_->setEnabled(controls_.SimulatorPicker);
    libraryPicker_->setEnabled(controls_.LibraryPicker);
}

void frmMain::cmdWorld_Click() {
    if (running_ || !controls_.Update) return;
    if (worker_.joinable()) worker_.join();
    beforeRun_ = controls_;
    updateRequest_.reset();
    closeAfterRun_ = false;
    frontEnd_->UnloadRequested = false;
    controls_ = AtRunStart(controls_);
    ApplyControls();
    running_ = true;
    gate_.Start();
    workerDone_ = false;
    try {
        StartWorker();
    } catch (...) {
        // No thread for the run: the window comes back as it was.
        workerDone_ = true;
        OnRunEnded(std::nullopt);
    }
}

void frmMain::StartWorker() {
    worker_ = std::thread([this] {
        std::optional<RunEnd> end;
        try {
            end = ::skl::cmdWorld_Click(*state_, *frontEnd_);
        } catch (...) {
            // Nothing of the run escapes its handlers; should anything, the
            // files are closed and the window comes back as after a refused run.
            state_->Files.Table.CloseAll();
        }
        if (!abandoned_)
            QMetaObject::invokeMethod(
                this, [this, end] { OnRunEnded(end); }, Qt::QueuedConnection);
        workerDone_ = true;
    });
}

void frmMain::OnRunEnded(std::optional<RunEnd> end) {
    if (worker_.joinable()) worker_.join();
    if (abandoned_) return;
    running_ = false;
    gate_.Stop();
    if ((end && EndsProcess(*end)) || frontEnd_->UnloadRequested) {
        Form_Unload();
        hide();
        end_(1);
        return;
    }
    controls_ = AtRunEnd(beforeRun_, updateRequest_);
    ApplyControls();
    ShowBar(false);
    if (closeAfterRun_) {
        closeAfterRun_ = false;
        close();
    }
}

bool frmMain::AskCancelQuestion(bool evenWithoutCancelPoint) {
    const CancelGate::Ask ask = gate_.BeginQuestion();
    if (ask == CancelGate::Ask::Open) return false;
    if (ask == CancelGate::Ask::Confirmed) return true;
    if (ask == CancelGate::Ask::NoCancelPoint && !evenWithoutCancelPoint) return false;
    const QMessageBox::StandardButton answer =
        ask_(this, Shown(kCancelQuestion), QMessageBox::Yes | QMessageBox::No,
             QMessageBox::Critical, QString::fromLatin1(kTitleText));
    ShowBar(false);
    const bool yes = answer == QMessageBox::Yes;
    if (ask == CancelGate::Ask::Question) gate_.Answer(yes);
    // A second request after a confirmed cancel has nothing left to cancel.
    if (yes && running_) {
        controls_.Cancel = false;
        ApplyControls();
    }
    return yes;
}

void frmMain::cmdCancel_Click() {
    if (running_) AskCancelQuestion(false);
}

void frmMain::cmdExit_Click() {
    close();
}

void frmMain::cmdHelp_Click() {
    try {
        open_(QUrl::fromLocalFile(
            HelpPage(options_.ProgramFolder, QCoreApplication::applicationDirPath())));
    } catch (...) {
        // A help page that cannot be opened goes unnoticed.
    }
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        if (closeAfterRun_ || !AskCancelQuestion(true)) return;
        // The window closes once the worker has stopped, unless the run ended
        // while the question was open.
        if (running_) {
            closeAfterRun_ = true;
            return;
        }
    }
    Form_Unload();
    event->accept();
}

void frmMain::ShowStatus(const std::string& text) {
    lblExplain_->setText(Shown(text));
}

void frmMain::ShowPercent(double percent) {
    if (!std::isfinite(percent)) return;
    const double clamped = percent < 0 ? 0 : (percent > 100 ? 100 : percent);
    showBar_->setValue(static_cast<int>(std::lround(clamped * 10)));
}

void frmMain::ShowBar(bool visible) {
    showBar_->setVisible(visible);
}

MessageAnswer frmMain::ShowMessage(const std::string& text, MessageButtons buttons,
                                   const std::string& title) {
    if (abandoned_) return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    const bool yesNo = buttons == MessageButtons::YesNo;
    const QMessageBox::StandardButton answer =
        ask_(this, Shown(text), yesNo ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok,
             QMessageBox::NoIcon, Shown(title));
    if (!yesNo) return MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

void frmMain::RunEnablesUpdate(bool enabled) {
    if (running_) {
        updateRequest_ = enabled;
        return;
    }
    controls_.Update = enabled;
    ApplyControls();
}

void frmMain::RunEnablesCancel(bool enabled) {
    controls_.Cancel = running_ && enabled && !gate_.CancelConfirmed();
    ApplyControls();
}

}  // namespace skl::frontend
