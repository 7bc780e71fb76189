// The window driven through its phases on Qt's offscreen platform, and the
// mapping of outcomes and phases to what it shows.
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

#include "frontend/frmMain.h"
#include "platform/Win1252.h"
#include "support/BglBuilder.h"
#include "support/RunHelpers.h"

namespace skl::frontend {
namespace {

namespace fs = std::filesystem;
constexpr int kTimeout = 60000;

std::string AirportBgl(int number) {
    std::string icao = "KT" + std::string(1, static_cast<char>('A' + number));
    test::NameListEntry entry{icao, "FIELD", "SEATTLE", "WASHINGTON", "UNITED STATES", "AMERICA"};
    return test::BuildBgl(
        {.Sections = {test::Section(test::kSectionNameList, {{test::NameList({entry})}}),
                      test::Section(test::kSectionAirport,
                                    {{test::Airport(3, icao, 47 + number * 0.01, -122.3, 0)}})}});
}

// An FS2004 installation whose one area holds eight BGL files: seven cancel points.
struct Installation {
    test::TempDir Dir;
    fs::path Simulator = Dir.Path / "Fs9";
    fs::path AddOn = Simulator / "Addon Scenery" / "scenery";
    fs::path Program = Dir.Path / "Skyloom";
    fs::path Empty = Dir.Path / "Empty";
    platform::DriveMap Drives = platform::MakeDriveMap(Dir.Path.string(), {});

    explicit Installation(bool installed = true, bool stored = true) {
        test::MakeFs9Folder(Simulator,
                            test::SceneryCfg({{"Addon", "Addon Scenery", "", "2", "TRUE"}}));
        for (int i = 0; i < 8; ++i)
            test::WriteFile(AddOn / ("A" + std::to_string(i) + ".bgl"), AirportBgl(i));
        fs::create_directories(Empty);
        fs::create_directories(Program);
        if (installed) test::MakeProgramFolder(Program);
        if (stored)
            test::WriteFile(Program / "SKLDbManager.ini", "[FS]\r\nFSPATH09=" + Stored(Simulator));
    }
    std::string Stored(const fs::path& folder) const {
        return Upper1252(test::WindowsFolder(Drives, folder));
    }
    fs::path Set(const char* name) const { return Program / "database" / "FS09" / name; }
    std::string Ini() const { return test::ReadBytes(Program / "SKLDbManager.ini"); }
    std::string LastLogLine() const { return test::ReadLines(Program / "SKLDBM_FS09.LOG").back(); }
};

// Holds the worker at chosen cancel points until the test lets it go on.
struct CancelPoints {
    std::mutex Mutex;
    std::condition_variable Changed;
    std::set<int> HoldAt;
    int Calls = 0;
    int HeldAt = 0;

    void Arrive() {
        std::unique_lock lock(Mutex);
        if (!HoldAt.count(++Calls)) return;
        HeldAt = Calls;
        Changed.wait_for(lock, std::chrono::seconds(30), [this] { return HeldAt == 0; });
    }
    void Release() {
        std::lock_guard lock(Mutex);
        HeldAt = 0;
        Changed.notify_all();
    }
    bool Held(int point) {
        std::lock_guard lock(Mutex);
        return HeldAt == point;
    }
    int Count() {
        std::lock_guard lock(Mutex);
        return Calls;
    }
};

// Notes the progress bar being shown ('S') and hidden ('H').
struct BarWatch : QObject {
    std::string Events;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
            Events += event->type() == QEvent::Show ? 'S' : 'H';
        return false;
    }
};

struct Asked {
    QString Text;
    QMessageBox::StandardButtons Buttons;
    QMessageBox::Icon Icon;
    QString Title;
};

// A window over an installation, with message boxes, the help opener and the end
// of the process caught.
struct Window {
    CancelPoints Points;
    BarWatch Bar;
    std::vector<Asked> Questions;
    std::function<QMessageBox::StandardButton()> Answer = [] { return QMessageBox::No; };
    std::vector<int> Ends;
    std::vector<QUrl> Opened;
    frmMain Form;

    explicit Window(const Installation& inst, std::vector<platform::DriveMapping> mappings = {})
        : Form(WindowOptions{QString::fromStdString(inst.Program.string()), mappings, {}}) {
        Form.SetAskFunction(
            [this](QWidget*, const QString& text, auto buttons, auto icon, auto title) {
                Questions.push_back({text, buttons, icon, title});
                return Answer();
            });
        Form.SetOpenFunction([this](const QUrl& url) { return Opened.push_back(url), false; });
        Form.SetEndFunction([this](int code) { Ends.push_back(code); });
        Form.SetCancelPointObserver([this] { Points.Arrive(); });
        Form.findChild<QProgressBar*>("ShowBar")->installEventFilter(&Bar);
        Form.Form_Load();
        Form.show();
    }
    QString Text(const char* label) { return Form.findChild<QLabel*>(label)->text(); }
    QRgb Colour(const char* label) {
        return Form.findChild<QLabel*>(label)->palette().color(QPalette::WindowText).rgb() &
               0xFFFFFF;
    }
    bool On(const char* name) { return Form.findChild<QWidget*>(name)->isEnabled(); }
    QString Caption() { return Form.findChild<QPushButton*>("cmdWorld")->text(); }
    bool BarShown() { return Form.findChild<QProgressBar*>("ShowBar")->isVisible(); }
    void Click(const char* button) {
        QTest::mouseClick(Form.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    // Chooses a folder as a user does: its parent open, the folder's item made current.
    void Choose(FolderPicker* picker, const fs::path& folder) {
        QVERIFY(picker->SetFolder(QString::fromStdString(folder.parent_path().string()), true));
        QTreeWidgetItem* parent = picker->FolderList()->currentItem();
        for (int i = 0; i < parent->childCount(); ++i) {
            if (parent->child(i)->text(0).toStdString() == folder.filename().string())
                picker->FolderList()->setCurrentItem(parent->child(i));
        }
        QCOMPARE(picker->Folder().toStdString(), folder.string());
    }
    // Starts a run and waits until the worker is held at the cancel point.
    void RunTo(int point) {
        Points.HoldAt.insert(point);
        Click("cmdWorld");
        QTRY_VERIFY_WITH_TIMEOUT(Points.Held(point), kTimeout);
        QTRY_VERIFY(On("cmdCancel"));  // once the run's queued calls are in
    }
    void WaitForRunEnd() { QTRY_VERIFY_WITH_TIMEOUT(!Form.RunUnderWay(), kTimeout); }
};

}  // namespace

class WindowTest : public QObject {
    Q_OBJECT

  private slots:
    void OutcomesAndPhasesMapToControls() {
        struct Row {
            Outcome Result;
            std::optional<Colour> Message;
            bool Library;
        };
        for (Row row : {Row{Outcome::NoSimulator, Colour::Blue, false},
                        Row{Outcome::Fs2004, Colour::Blue, false},
                        Row{Outcome::FsxReady, Colour::Blue, false},
                        Row{Outcome::FsxLibraryMissing, Colour::Blue, true},
                        Row{Outcome::FsxNetworkReady, std::nullopt, false},
                        Row{Outcome::FsxNetworkCopyMissing, Colour::Red, false}}) {
            Validation validation;
            validation.Result = row.Result;
            validation.UpdateEnabled = row.Result == Outcome::FsxNetworkReady;
            OutcomeView view = ViewOfOutcome(validation);
            QVERIFY(view.MessageColour == row.Message);
            QCOMPARE(view.LibraryPickerEnabled, row.Library);
            QVERIFY(view.LibraryLabelColour == (row.Library ? Colour::Black : Colour::Grey));
            QCOMPARE(view.UpdateEnabled, validation.UpdateEnabled);
        }
        Controls before{.Update = true, .Exit = true, .LibraryPicker = false};
        Controls during = AtRunStart(before);
        QVERIFY(!during.Update && !during.Exit && !during.SimulatorPicker && !during.LibraryPicker);
        Controls finished = AtRunEnd(before, false);
        QVERIFY(!finished.Update && !finished.Cancel && finished.Exit && finished.SimulatorPicker);
        Controls cancelled = AtRunEnd(before, std::nullopt);
        QVERIFY(cancelled.Update && cancelled.Exit && !cancelled.LibraryPicker);
        QVERIFY(EndsProcess(RunEnd::Aborted) && EndsProcess(RunEnd::Stopped) &&
                !EndsProcess(RunEnd::Busy));
        QCOMPARE(DisplayText("A\rJ\xE4ger"), std::string("A\nJ\xC3\xA4ger"));

        // No question once the area loop is over; a yes is taken at one cancel point only.
        CancelGate gate;
        gate.Start();
        QCOMPARE(gate.BeginQuestion(), CancelGate::Ask::Question);
        gate.Answer(true);
        QVERIFY(gate.AtCancelPoint() && !gate.AtCancelPoint());
        gate.NoteStatus("Area\r ... reading:  A.bgl");
        QCOMPARE(gate.BeginQuestion(), CancelGate::Ask::Question);
        gate.Answer(false);
        gate.NoteStatus("   ...assigning ILS to runways and airports!   ");
        QCOMPARE(gate.BeginQuestion(), CancelGate::Ask::NoCancelPoint);
    }

    void LoadWithoutStoredPath() {
        Installation inst(true, false);
        {
            Window w(inst);
            QCOMPARE(w.Form.windowTitle(), QString("Skyloom Database Manager"));
            QCOMPARE(w.Text("Label1") + "|" + w.Text("Label2") + "|" + w.Text("Build"),
                     QString("Database Manager|for Flight Simulator 2004 and FlightSimulator X|"
                             "Vers.: 8.6 Net (Build: 021209)"));
            QCOMPARE(w.Text("lblExplain"), QString(kExplanationText));
            QCOMPARE(w.Text("lblInvalidPath"), QString("Invalid path!!! Choose different path!!!"));
            QCOMPARE(w.Colour("lblInvalidPath"), 0xFF0000u);
            QCOMPARE(w.Text("lblMessage"), QString());
            QCOMPARE(w.Colour("lblMessage"), 0x0000FFu);
            QCOMPARE(w.Caption(), QString("Update  &Airports"));
            QVERIFY(!w.On("cmdWorld") && !w.On("cmdCancel") && w.On("cmdExit") && w.On("dirFS"));
            QVERIFY(!w.BarShown());
            QCOMPARE(inst.Ini(), std::string());
            w.Click("cmdExit");
            QVERIFY(!w.Form.isVisible() && w.Questions.empty());
        }
        QCOMPARE(inst.Ini(), std::string("[FS]\r\nFSPATH09=\r\nFSPATH10=\r\nFSLAST=0\r\n"));
    }

    void LoadWithStoredPath() {
        Installation inst;
        Window w(inst);
        QCOMPARE(w.Form.SimulatorPicker()->Folder().toStdString(), inst.Simulator.string());
        QCOMPARE(w.Text("lblInvalidPath"), QString("FS2004 directory"));
        QCOMPARE(w.Text("lblMessage"),
                 QString("You have correctly chosen the FS2004 path\nPress Update button now!"));
        QCOMPARE(w.Caption(), QString("Update Airports\nfrom FS 2004"));
        QVERIFY(w.On("cmdWorld") && !w.On("cmdCancel"));
        // The right picker follows the left one and is greyed out.
        QCOMPARE(w.Form.LibraryPicker()->Folder(), w.Form.SimulatorPicker()->Folder());
        QVERIFY(!w.On("dirScenLib") && !w.On("drvScenLib"));
        QCOMPARE(w.Colour("lblDirScenLib"), 0x808080u);
    }

    void PickerChangesValidate() {
        Installation inst(true, false);
        fs::path fsx = inst.Dir.Path / "FSX";
        fs::path library = inst.Dir.Path / ".Library";  // hidden folders are listed
        test::MakeFsxFolder(fsx);
        test::WriteFile(fsx / "scenery.cfg", "");
        test::MakeFsxLibrary(library, "");
        {
            Window w(inst);
            w.Choose(w.Form.SimulatorPicker(), inst.Empty);
            QCOMPARE(w.Text("lblInvalidPath"), QString("Invalid path!!\nChoose different path!!!"));
            QCOMPARE(w.Text("lblMessage"),
                     QString("Please select FS path in left drive and directory box!"));
            QCOMPARE(w.Caption(), QString("Update Airports"));
            w.Choose(w.Form.SimulatorPicker(), inst.Simulator);
            QVERIFY(w.On("cmdWorld"));
            w.Choose(w.Form.SimulatorPicker(), fsx);
            QCOMPARE(w.Text("lblInvalidPath"), QString("FS X directory"));
            QVERIFY(!w.On("cmdWorld") && w.On("dirScenLib"));
            QCOMPARE(w.Colour("lblDirScenLib"), 0x000000u);
            w.Choose(w.Form.LibraryPicker(), library);
            QCOMPARE(
                w.Text("lblMessage"),
                QString("You have correctly chosen the paths for FSX\nPress Update button now!"));
            QCOMPARE(w.Caption(), QString("Update Airports\nfrom FS X"));
            QVERIFY(w.On("cmdWorld") && !w.On("dirScenLib"));
            w.Choose(w.Form.SimulatorPicker(), inst.Empty);  // keeps the last valid paths
            w.Click("cmdExit");
        }
        QCOMPARE(inst.Ini(), "[FS]\r\nFSPATH10=" + inst.Stored(fsx) + "\r\nFSPATH09=" +
                                 inst.Stored(inst.Simulator) + "\r\nFSLAST=1\r\n");
    }

    void FsxInAWinePrefixFindsItsLibrary() {
        Installation inst(true, false);
        fs::path prefix = inst.Dir.Path / "wine";
        fs::path fsx = prefix / "drive_c" / "FSX";
        fs::path data = prefix / "drive_c" / "ProgramData" / "Microsoft" / "FSX";
        test::MakeWinePrefix(prefix, "C:\\ProgramData");
        test::MakeFsxFolder(fsx);
        test::MakeFsxLibrary(data, "");
        Window w(inst);
        w.Choose(w.Form.SimulatorPicker(), fsx);
        // The right picker moves to the data folder on the prefix's C: drive.
        QCOMPARE(w.Form.LibraryPicker()->Folder().toStdString(), data.string());
        QCOMPARE(w.Form.LibraryPicker()->DriveLetter(), 'C');
        QCOMPARE(w.Form.CurrentSelection().CfgFolder,
                 std::string("C:\\ProgramData\\Microsoft\\FSX\\"));
        QCOMPARE(w.Form.CurrentSelection().SimulatorFolder, std::string("C:\\FSX\\"));
        QVERIFY(w.On("cmdWorld") && !w.On("dirScenLib"));
    }

    void RunToFinished() {
        Installation inst;
        Window w(inst);
        w.Click("cmdWorld");
        QVERIFY(w.Form.RunUnderWay() && !w.On("cmdWorld") && !w.On("cmdExit") && !w.On("dirFS"));
        w.WaitForRunEnd();
        QCOMPARE(w.Text("lblExplain"), QString("Finished!"));
        QVERIFY(!w.On("cmdWorld") && !w.On("cmdCancel") && w.On("cmdExit") && w.On("dirFS"));
        QCOMPARE(w.Bar.Events, std::string("SH"));
        QCOMPARE(w.Points.Count(), 7);
        QVERIFY(w.Questions.empty() && fs::exists(inst.Set("City.skl")));
        QCOMPARE(inst.LastLogLine(), std::string("FillCityTable successfull"));
        // Only a picker change that validates enables the update button again.
        w.Choose(w.Form.SimulatorPicker(), inst.Empty);
        w.Choose(w.Form.SimulatorPicker(), inst.Simulator);
        QVERIFY(w.On("cmdWorld"));
    }

    void CancelAnsweredNo() {
        Installation inst;
        Window w(inst);
        bool workerWaited = false;
        w.Answer = [&] {
            w.Points.Release();
            QTest::qWait(300);
            workerWaited = w.Points.Count() == 3;  // still at the point it was released from
            return QMessageBox::No;
        };
        w.RunTo(3);
        w.Click("cmdCancel");
        QCOMPARE(w.Questions.size(), size_t(1));
        QCOMPARE(w.Questions[0].Text,
                 QString("WARNING!\nCancelling this process will restore the old "
                         "database files!\nDo you wish to cancel this process?"));
        QVERIFY(w.Questions[0].Buttons == (QMessageBox::Yes | QMessageBox::No));
        QCOMPARE(w.Questions[0].Icon, QMessageBox::Critical);
        QVERIFY(workerWaited);
        w.WaitForRunEnd();
        QCOMPARE(w.Text("lblExplain"), QString("Finished!"));
        QCOMPARE(w.Points.Count(), 7);
        // Hidden by the question, shown again by the passes, hidden at the end.
        QCOMPARE(w.Bar.Events, std::string("SHSH"));
    }

    void CancelAnsweredYes() {
        Installation inst;
        Window w(inst);
        w.Click("cmdWorld");
        w.WaitForRunEnd();
        const std::string previousAirports = test::ReadBytes(inst.Set("Airport.skl"));
        test::WriteFile(inst.AddOn / "A9.bgl", AirportBgl(9));
        w.Choose(w.Form.SimulatorPicker(), inst.Empty);
        w.Choose(w.Form.SimulatorPicker(), inst.Simulator);
        w.Answer = [&] { return w.Points.Release(), QMessageBox::Yes; };
        w.RunTo(9);  // the second cancel point of the second run
        w.Click("cmdCancel");
        QVERIFY(!w.On("cmdCancel"));
        w.WaitForRunEnd();
        QCOMPARE(w.Text("lblExplain"), QString(" "));
        QVERIFY(w.On("cmdExit") && !w.On("cmdCancel") && w.On("cmdWorld") && w.On("dirFS") &&
                !w.BarShown());
        QCOMPARE(w.Points.Count(), 9);
        QCOMPARE(test::ReadBytes(inst.Set("Airport.skl")), previousAirports);
        QVERIFY(!fs::exists(inst.Set("Airportskl.old")));
        QCOMPARE(inst.LastLogLine(), std::string("Terminated via User!!!"));
    }

    void ClosingDuringRunAsksAndClosesOnceStopped() {
        Installation inst;
        Window w(inst);
        auto answer = QMessageBox::No;
        w.Answer = [&] { return w.Points.Release(), answer; };
        w.RunTo(2);
        w.Points.HoldAt.insert(4);
        QVERIFY(!w.Form.close());
        QTRY_VERIFY_WITH_TIMEOUT(w.Points.Held(4), kTimeout);
        QVERIFY(w.Form.isVisible() && w.Form.RunUnderWay());
        answer = QMessageBox::Yes;
        QVERIFY(!w.Form.close());  // not before the worker has stopped
        QCOMPARE(w.Questions.size(), size_t(2));
        QTRY_VERIFY_WITH_TIMEOUT(!w.Form.isVisible(), kTimeout);
        QVERIFY(!w.Form.RunUnderWay() && w.Ends.empty());
        QCOMPARE(w.Points.Count(), 4);
        QCOMPARE(inst.LastLogLine(), std::string("Terminated via User!!!"));
        QCOMPARE(inst.Ini(), "[FS]\r\nFSPATH09=" + inst.Stored(inst.Simulator) +
                                 "\r\nFSPATH10=\r\nFSLAST=0\r\n");

        // A window destroyed during a run cancels it and waits for the worker.
        auto again = std::make_unique<Window>(inst);
        again->RunTo(2);
        std::thread releaser([&points = again->Points] {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            points.Release();
        });
        again.reset();
        releaser.join();
        QCOMPARE(inst.LastLogLine(), std::string("Terminated via User!!!"));
    }

    void FailedInstallationCheckUnloadsAndEnds() {
        Installation inst(false);
        Window w(inst);
        w.Answer = [] { return QMessageBox::Ok; };
        w.Click("cmdWorld");
        w.WaitForRunEnd();
        const std::string program = inst.Stored(inst.Program);
        QCOMPARE(w.Questions.size(), size_t(1));
        QCOMPARE(w.Questions[0].Text.toStdString(),
                 "Database Manager is not in Skyloom main folder or installation failed! " +
                     program.substr(0, program.size() - 1) + "! Program will now abort!");
        QVERIFY(w.Questions[0].Buttons == QMessageBox::Ok);
        QCOMPARE(w.Questions[0].Title, QString("Database Manager"));
        QCOMPARE(w.Ends, std::vector<int>{1});
        QVERIFY(!w.Form.isVisible() && !fs::exists(inst.Set("Airport.skl")));
        QCOMPARE(inst.Ini(), "[FS]\r\nFSPATH09=" + inst.Stored(inst.Simulator) +
                                 "\r\nFSPATH10=\r\nFSLAST=0\r\n");
    }

    void HelpUnreadyDrivesAndVanishedFoldersAreQuiet() {
        Installation inst(true, false);
        Window w(inst, {{'Q', (inst.Dir.Path / "not-mounted").string()}});
        w.Click("cmdHelp");
        QCOMPARE(w.Opened.size(), size_t(1));
        QCOMPARE(w.Opened[0].toLocalFile().toStdString(),
                 (inst.Program / "Help" / "dbmanager.htm").string());
        w.Form.SetOpenFunction([](const QUrl&) -> bool { throw std::runtime_error("no handler"); });
        w.Click("cmdHelp");

        FolderPicker* picker = w.Form.SimulatorPicker();
        const QString before = picker->Folder();
        QComboBox* drives = w.Form.findChild<QComboBox*>("drvFS");
        const int q = drives->findText("q:", Qt::MatchStartsWith);
        QVERIFY(q >= 0);
        drives->setCurrentIndex(q);
        emit drives->activated(q);
        QCOMPARE(picker->Folder(), before);
        QVERIFY(drives->currentText().startsWith("z:"));

        fs::path gone = inst.Dir.Path / "Gone";
        fs::create_directories(gone);
        w.Choose(picker, inst.Empty);  // lists Gone beside Empty
        fs::remove(gone);
        w.Choose(picker, gone);
        QCOMPARE(w.Text("lblInvalidPath"), QString("Invalid path!!\nChoose different path!!!"));
        QVERIFY(w.Questions.empty());
    }
};

}  // namespace skl::frontend

QTEST_MAIN(skl::frontend::WindowTest)
#include "WindowTest.moc"
