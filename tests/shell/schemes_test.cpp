// Tests of the colour schemes: listing, the start-up and preview loads, the menu-bar rule and the
// report for a missing schemes file. Damaged all.col files are in config_file_test.cpp.
#include "shell/schemes.h"
#include "shell_test_support.h"

#include <QApplication>
#include <QPalette>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tallyon;
using namespace tallyon::testing;

class SchemesTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;
    AppState state_;

private slots:
    void init()
    {
        QVERIFY(dir_.isValid());
        QFile::remove(dir_.filePath("all.col"));
        state_ = AppState{};
        state_.AppDir = dir_.path() + "/";
        state_.SchemeColours = Marked();
        state_.settings.SchemeFile = "Blue.col";
    }

    void listsNamesInFileOrder()
    {
        QVERIFY(WriteBytes(SchemesFilePath(state_),
                           Block("xp.col", 1) + Block("Blue.col", 2) + "a.COL\r\n" + Block("Rose.col", 3)));
        QCOMPARE(ListSchemes(state_).value_or(QStringList{"failed"}), (QStringList{"xp", "Blue", "Rose"}));
    }

    void startupLoad()
    {
        QVERIFY(WriteBytes(SchemesFilePath(state_), Block("xp.col", 1) + "Red.col\r\n0;0;0\r\n1;1;1\r\n300;20;12\r\n" +
                                                        QByteArray("9;8;7\r\n").repeated(10)));
        MessageLog log;
        QCOMPARE(LoadSchemeAtStartup(state_, "Red.col"), RGB(255, 20, 12));
        QCOMPARE(state_.SchemeColours[12], RGB(9, 8, 7));
        QCOMPARE(state_.SchemeColours[13], Marked()[13]); // never from the file
        QCOMPARE(state_.settings.SchemeFile, QString("Blue.col"));
        QVERIFY(log.calls.isEmpty());

        // Names match in exact case only.
        const SchemeTable loaded = state_.SchemeColours;
        QCOMPARE(LoadSchemeAtStartup(state_, "XP.col"), Colour(0));
        QCOMPARE(log.calls, (Messages{{"Colour Scheme: XP.col not found", "vbok+vbcritical"}}));
        QCOMPARE(state_.settings.SchemeFile, QString("xp.col"));
        QVERIFY(state_.SchemeColours == loaded);
    }

    // The preview reads all.col in the current directory and has "default.col" built in.
    void previewLoad()
    {
        QTemporaryDir current;
        QVERIFY(WriteBytes(current.filePath("all.col"), Block("xp.col", 100)));
        QVERIFY(QDir::setCurrent(current.path()));
        MessageLog log;
        QCOMPARE(LoadSchemePreview(state_, "xp.col"), RGB(102, 10, 20));

        const QColor base = QApplication::palette().color(QPalette::Base);
        const Colour listBox = RGB(base.red(), base.green(), base.blue());
        QCOMPARE(LoadSchemePreview(state_, "DEFAULT.COL"), listBox);
        QCOMPARE(state_.SchemeColours[3], RGB(20, 20, 200));
        QCOMPARE(state_.SchemeColours[4], listBox);
        QVERIFY(log.calls.isEmpty());

        QCOMPARE(LoadSchemePreview(state_, "none.col"), Colour(0));
        QCOMPARE(log.calls, (Messages{{"Color Scheme: none.col not found", "vbok"}}));
        QCOMPARE(state_.settings.SchemeFile, QString("default.col"));
        QVERIFY(QDir::setCurrent(QDir::tempPath()));
    }

    // A schemes file that cannot be read ends the program with code 1, a message box and a
    // line on stderr, each saying what is wrong with it: missing, or there but not a file.
    void unreadableSchemesFileIsFatal_data()
    {
        QTest::addColumn<bool>("fifo");
        QTest::addColumn<QString>("why");
        QTest::newRow("missing") << false << "not found";
        QTest::newRow("a FIFO") << true << "is not a regular file";
    }

    void unreadableSchemesFileIsFatal()
    {
        QFETCH(bool, fifo);
        QFETCH(QString, why);
        QTemporaryDir dir;
        AppState state;
        state.AppDir = dir.path() + "/";
        const QString path = SchemesFilePath(state);
        if (fifo)
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        FileProblem problem = FileProblem::None;
        QVERIFY(!ListSchemes(state, &problem)); // at once: the FIFO is never opened
        int out[2];
        QCOMPARE(pipe(out), 0);
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            dup2(out[1], STDERR_FILENO);
            const QString expected = "Colour schemes file:\r\n" + path + "\r\n" + why + ", the program cannot start";
            SetMessageInterceptor([expected](const QString& text, const QString& style) {
                if (text != expected || style != "vbok+vbcritical")
                    _exit(3);
                return 1;
            });
            FailMissingSchemes(path, problem);
        }
        close(out[1]);
        QByteArray report;
        char buffer[256];
        for (ssize_t n; (n = read(out[0], buffer, sizeof buffer)) > 0;)
            report.append(buffer, n);
        close(out[0]);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 1);
        QVERIFY(report.contains(("Tallyon: colour schemes file " + why + ": " + path + "\n").toLocal8Bit()));
    }
};

QTEST_MAIN(SchemesTest)
#include "schemes_test.moc"
