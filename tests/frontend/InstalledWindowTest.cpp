// The window of an installed program: the question for the program folder and
// where the help page is found.
#include <QtTest>

#include "frontend/HelpPage.h"
#include "frontend/ProgramFolderPrompt.h"
#include "support/RunHelpers.h"

namespace skl::frontend {
namespace {

namespace fs = std::filesystem;

QString Q(const fs::path& path) {
    return QString::fromStdString(path.string());
}

// Dialogs that answer from a script and keep what they were shown.
struct ScriptedDialogs {
    bool Choose = true;
    std::vector<fs::path> Picks;
    QStringList Offered;
    QStringList Told;
    QStringList Starts;

    ProgramFolderDialogs Dialogs() {
        ProgramFolderDialogs dialogs;
        dialogs.OfferChoice = [this](const QString& text) {
            Offered << text;
            return Choose;
        };
        dialogs.ChooseFolder = [this](const QString& start) {
            Starts << start;
            if (Picks.empty()) return QString();
            const fs::path pick = Picks.front();
            Picks.erase(Picks.begin());
            return Q(pick);
        };
        dialogs.Tell = [this](const QString& text) { Told << text; };
        return dialogs;
    }
};

struct Installed {
    test::TempDir Dir;
    fs::path Own = Dir.Path / "bin";
    fs::path Skyloom = Dir.Path / "Skyloom";
    ProgramFolderPlaces Places;

    Installed() {
        fs::create_directories(Own);
        test::MakeProgramFolder(Skyloom);
        Places.Memory = (Dir.Path / "config" / "skldbm" / "program-folder").string();
        Places.WinePrefixes = {(Dir.Path / "wine").string()};
    }
    std::string Memory() const { return test::ReadBytes(Places.Memory); }
};

}  // namespace

class InstalledWindowTest : public QObject {
    Q_OBJECT

  private slots:
    void AsksForTheFolderChecksAndRemembersIt() {
        Installed inst;
        fs::path wrong = inst.Dir.Path / "Wrong";
        test::WriteFile(wrong / "magvar09.swf", "");
        ScriptedDialogs script;
        script.Picks = {wrong, inst.Skyloom};
        QCOMPARE(ChooseProgramFolder(Q(inst.Own), inst.Places, script.Dialogs()), Q(inst.Skyloom));
        QCOMPARE(script.Offered.size(), 1);
        const QString offered = script.Offered[0];
        QVERIFY2(offered.startsWith("The Skyloom program folder (the folder that holds "
                                    "magvar09.swf, magvar10.swf and SKL_Intro.bmp) was not found."),
                 qPrintable(offered));
        QVERIFY2(offered.contains(Q(inst.Own) + " (the folder of SKLDbManager): magvar09.swf, "
                                                "magvar10.swf and SKL_Intro.bmp are missing"),
                 qPrintable(offered));
        QVERIFY2(offered.contains(Q(inst.Dir.Path / "wine") + ": no Wine prefix"),
                 qPrintable(offered));
        QCOMPARE(script.Told,
                 QStringList{Q(wrong) + " is not the Skyloom program folder: "
                                        "magvar10.swf and SKL_Intro.bmp are missing."});
        // The second pick starts where the wrong one was.
        QCOMPARE(script.Starts.size(), 2);
        QCOMPARE(script.Starts[1], Q(wrong));
        QCOMPARE(inst.Memory(), inst.Skyloom.string() + "\n");

        // Next start: the remembered folder, without a question.
        ScriptedDialogs again;
        QCOMPARE(ChooseProgramFolder(Q(inst.Own), inst.Places, again.Dialogs()), Q(inst.Skyloom));
        QVERIFY(again.Offered.empty());
    }

    void DecliningOrCancellingKeepsTheOwnFolderAndWritesNothing() {
        Installed inst;
        ScriptedDialogs declined;
        declined.Choose = false;
        QCOMPARE(ChooseProgramFolder(Q(inst.Own), inst.Places, declined.Dialogs()), Q(inst.Own));
        QVERIFY(declined.Starts.empty());

        ScriptedDialogs cancelled;
        QCOMPARE(ChooseProgramFolder(Q(inst.Own), inst.Places, cancelled.Dialogs()), Q(inst.Own));
        QCOMPARE(cancelled.Starts.size(), 1);
        QVERIFY(!fs::exists(inst.Dir.Path / "config"));
    }

    void AFolderThatCannotBeRememberedIsUsedAndSaidSo() {
        Installed inst;
        test::WriteFile(inst.Dir.Path / "config", "a file");
        ScriptedDialogs script;
        script.Picks = {inst.Skyloom};
        QCOMPARE(ChooseProgramFolder(Q(inst.Own), inst.Places, script.Dialogs()), Q(inst.Skyloom));
        QCOMPARE(script.Told.size(), 1);
        QVERIFY2(script.Told[0].startsWith("The folder is used now but cannot be remembered: "
                                           "cannot create " +
                                           Q(inst.Dir.Path / "config")),
                 qPrintable(script.Told[0]));
    }

    void HelpPageOfTheProgramFolderElseTheInstalledOne() {
        test::TempDir dir;
        const fs::path program = dir.Path / "Skyloom";
        const fs::path bin = dir.Path / "usr" / "bin";
        fs::create_directories(bin);
        const QString ownPage = Q(program / "Help" / "dbmanager.htm");
        QCOMPARE(HelpPage(Q(program), Q(bin)), ownPage);

        const fs::path installed = (bin / SKL_INSTALLED_HELP_PAGE).lexically_normal();
        test::WriteFile(installed, "package");
        QCOMPARE(HelpPage(Q(program), Q(bin)), Q(installed));

        test::WriteFile(program / "Help" / "dbmanager.htm", "the program folder's own");
        QCOMPARE(HelpPage(Q(program), Q(bin)), ownPage);
    }
};

}  // namespace skl::frontend

QTEST_MAIN(skl::frontend::InstalledWindowTest)
#include "InstalledWindowTest.moc"
