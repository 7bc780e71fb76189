// The window's construction: its controls and their layout, the buttons that do no
// more than close the window or open the help page, and the end of the window.
// The pickers are in frmMainPickers.cpp, the ini file in frmMainIni.cpp, the run on
// the worker thread and its cancel in frmMainRun.cpp.
#include "frontend/frmMain.h"

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

#include "frontend/HelpPage.h"
#include "frontend/WindowFrontEnd.h"
#include "frontend/WindowText.h"
#include "platform/DriveMap.h"

namespace skl::frontend {

namespace {

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

void frmMain::ApplyControls() {
    cmdWorld_->setEnabled(controls_.Update);
    cmdCancel_->setEnabled(controls_.Cancel);
    cmdExit_->setEnabled(controls_.Exit);
    simulatorPicker_->setEnabled(controls_.SimulatorPicker);
    libraryPicker_->setEnabled(controls_.LibraryPicker);
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

}  // namespace skl::frontend
