// Tests of the files on disk: tallyon.cfg's round trip and separators, the saved game's place,
// and one table of damaged input for tallyon.cfg and all.col (the fresh install is its
// "missing" row).
#include "shell/app_dir.h"
#include "shell/config_file.h"
#include "shell/saved_game_file.h"
#include "shell/schemes.h"
#include "shell_test_support.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

#include <optional>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

const QByteArray kFreshFile = " 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n";
const QString kCfg = "tallyon.cfg";
const QString kCol = "all.col";

// FullDisk fails the exit's write part way, as a full disk does: the file size limit stands in
// for the disk, so the test needs no mount.
enum Obstacle { None, Missing, Directory, ReadOnlyFile, ReadOnlyDirectory, Fifo, FullDisk };

QPair<QString, QString> CfgMessage(const QString& path, const char* outcome, const char* style)
{
    return {"Configuration file:\r\n" + path + "\r\ncould not be accessed, " + outcome, style};
}

// Reads the file at start-up and writes it at exit. A readable file keeps its settings; any
// other gets the information message and the fresh-install settings, written at once where
// possible. An obstacle makes the exit's write fail with the critical message, leaving it as
// it was.
void CheckConfig(AppState& state, const QString& dir, int obstacle, bool readable, const QString& scheme)
{
    const QString path = ConfigFilePath(state);
    const QByteArray before = obstacle == Fifo ? QByteArray() : ReadBytes(path); // a FIFO would block
    const bool writable = obstacle == None || obstacle == Missing || obstacle == Fifo || obstacle > FullDisk;
    MessageLog log;
    QCOMPARE(ReadConfig(state), readable);
    if (readable) {
        QCOMPARE(state.settings.SchemeFile, scheme);
    } else {
        QCOMPARE(log.calls.value(0), CfgMessage(path, "new file will be created", "vbok+vbinformation"));
        QCOMPARE(FormatConfig(state.settings), FormatConfig(FreshInstallSettings()));
        QCOMPARE(ReadBytes(path), writable ? kFreshFile : before);
    }
    const QByteArray kept = ReadBytes(path);
    {
        std::optional<FileSizeLimit> full;
        if (obstacle == FullDisk)
            full.emplace();
        QCOMPARE(WriteConfig(state), writable);
    }
    QCOMPARE(log.calls.size(), int(!readable) + int(!writable));
    if (!writable) {
        QCOMPARE(log.calls.last(), CfgMessage(path, "options not saved", "vbok+vbcritical"));
        QCOMPARE(ReadBytes(path), kept);
    }
    QCOMPARE(DirectoryEntries(dir), obstacle == ReadOnlyDirectory ? QStringList() : QStringList{kCfg});
}

// Loads scheme `name` at start-up: the first `entries` table entries come from the file, the
// rest stay; -1 means not found (one message). The result is entry 2 when it was reached.
void CheckScheme(AppState& state, const QString& name, int entries, Colour background)
{
    state.SchemeColours = Marked();
    MessageLog log;
    QCOMPARE(LoadSchemeAtStartup(state, name), background);
    QCOMPARE(log.calls.size(), entries < 0 ? 1 : 0);
    for (int i = 0; i < 14; ++i)
        QVERIFY2((state.SchemeColours[i] != Marked()[i]) == (i < entries), qPrintable(QString::number(i)));
}

// Keeps an environment variable's value, or its absence, and puts it back at the end.
struct KeptVariable {
    explicit KeptVariable(const char* name) : name(name), was(qEnvironmentVariableIsSet(name)), value(qgetenv(name)) {}
    ~KeptVariable()
    {
        if (was)
            qputenv(name, value);
        else
            qunsetenv(name);
    }
    const char* name;
    bool was;
    QByteArray value;
};

} // namespace

class ConfigFileTest : public QObject {
    Q_OBJECT

private slots:
    void writeThenReadRoundTrips()
    {
        QTemporaryDir dir;
        AppState state;
        state.AppDir = dir.path() + "/";
        state.settings = {4,          1,         3, RGB(1, 2, 3), 0xFFFFFFFFu, RGB(255, 255, 255), -4, RGB(128, 0, 0),
                          2147483647, "Blue.col"};
        MessageLog log;
        QVERIFY(WriteConfig(state));
        AppState back;
        back.AppDir = state.AppDir;
        QVERIFY(ReadConfig(back));
        QCOMPARE(FormatConfig(back.settings), FormatConfig(state.settings));
        QVERIFY(log.calls.isEmpty());
        QCOMPARE(DirectoryEntries(dir.path()), QStringList{kCfg});
    }

    // A program folder that cannot be written to sends the settings to the user's
    // configuration folder; the messages name the file there.
    void settingsGoWhereTheyCanBeWritten()
    {
        QTemporaryDir tmp;
        const QString appDir = tmp.filePath("lib/tallyon/"), config = tmp.filePath("config");
        QVERIFY(QDir().mkpath(appDir));
        QCOMPARE(SettingsDir(appDir), appDir);
        QVERIFY(QFile::setPermissions(appDir, QFile::ReadOwner | QFile::ExeOwner));
        const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", config.toLocal8Bit());
        AppState state;
        state.AppDir = appDir;
        state.SettingsDir = SettingsDir(appDir);
        qputenv("XDG_CONFIG_HOME", saved);
        QCOMPARE(state.SettingsDir, config + "/tallyon/");
        MessageLog log;
        QVERIFY(!ReadConfig(state));
        const QString path = config + "/tallyon/tallyon.cfg";
        QCOMPARE(log.calls.value(0), CfgMessage(path, "new file will be created", "vbok+vbinformation"));
        QCOMPARE(ReadBytes(path), kFreshFile);
        QVERIFY(WriteConfig(state));
        QCOMPARE(DirectoryEntries(appDir), QStringList());
    }

    // The saved game goes to $XDG_STATE_HOME/tallyon/game; to ~/.local/state/tallyon/game when
    // the variable is unset, empty or not an absolute path. Its folder is made on the first save.
    void savedGameGoesToTheStateFolder()
    {
        const KeptVariable home("HOME"), stateHome("XDG_STATE_HOME");
        QTemporaryDir tmp;
        qputenv("HOME", tmp.path().toLocal8Bit());
        const QString byDefault = tmp.path() + "/.local/state/tallyon/game";
        const QString named = tmp.path() + "/state";
        const std::pair<std::optional<QString>, QString> cases[] = {{std::nullopt, byDefault},
                                                                    {"", byDefault},
                                                                    {"relative/state", byDefault},
                                                                    {named, named + "/tallyon/game"}};
        for (const auto& [variable, path] : cases) {
            if (variable)
                qputenv("XDG_STATE_HOME", variable->toLocal8Bit());
            else
                qunsetenv("XDG_STATE_HOME");
            QCOMPARE(SavedGamePath(), path);
            QString why;
            QVERIFY(WriteSavedGame({"Tallyon saved game, format 1"}, &why));
            QCOMPARE(ReadBytes(path), QByteArray("Tallyon saved game, format 1\r\n"));
            QVERIFY(QFile::remove(path));
        }
    }

    // Blanks, tabs, commas and line breaks all separate the numbers; a number with a decimal
    // point or an exponent is rounded half to even; a width below 1 reads 1; a comma ends
    // SchemeFile, and a byte-order mark at its start stays part of it.
    void parsesSeparatorsAndDecimals()
    {
        const std::pair<QByteArray, QString> files[] = {
            {"  7   2\t1  0 0 16777215 0 128 6  \r\n  xp.col  \r\n", "xp.col"},
            {"7,2,1,0,0,16777215,0,128,6\r\nxp.col", "xp.col"},
            {"7\r\n2 1\r\n0\r\n0 16777215\r\n0\r\n128\r\n6\r\nxp.col\r\n", "xp.col"},
            {"7 2 0 0 0 16777215 0 128 6\r\nxp.col\r\n", "xp.col"},
            {"7 2 -5 0 0 16777215 0 128 6\r\nxp.col\r\n", "xp.col"},
            {"7 2 1 0 0 16777215 0 128 6\r\nmy,scheme.col\r\n", "my"},
            {"7.49 2.5 0.5 0 0 16777215.0 -0.4 1.28E2 5.5\r\nxp.col\r\n", "xp.col"},
            {"7 2 1 0 0 16777215 0 128 6\r\n\t\xef\xbb\xbf xp.col\r\n", QChar(0xFEFF) + QString(" xp.col")},
        };
        for (const auto& [bytes, scheme] : files) {
            const auto read = ParseConfig(bytes);
            QVERIFY2(read.has_value(), bytes.constData());
            Settings want = FreshInstallSettings();
            want.SchemeFile = scheme;
            QCOMPARE(FormatConfig(*read), FormatConfig(want));
        }
    }

    void damagedInput_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("obstacle");
        QTest::addColumn<QString>("name");      // tallyon.cfg: SchemeFile read; all.col: scheme loaded
        QTest::addColumn<int>("expect");        // tallyon.cfg: 1 readable; all.col: entries read
        QTest::addColumn<Colour>("background"); // all.col: the load's result

        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage.append(char((i * 131 + 7) % 256));
        const QByteArray mb(1 << 20, '7');
        const QByteArray line1 = " 7  2  1  0  0  16777215  0  128  6";
        const QByteArray nonAscii = "Gr\xc3\xbcn \xe9\x85\x8d.col";
        const QByteArray block = Block("s.col", 1);
        const Colour entry2 = RGB(3, 10, 20);
        auto cfg = [&](const char* tag, const QByteArray& bytes, int obstacle = None, bool readable = false,
                       const QString& scheme = "xp.col") {
            QTest::newRow(tag) << kCfg << bytes << obstacle << scheme << int(readable) << Colour(0);
        };
        auto col = [&](const char* tag, const QByteArray& bytes, int entries, Colour background = 0,
                       const QString& name = "s.col", int obstacle = None) {
            QTest::newRow(tag) << kCol << bytes << obstacle << name << entries << background;
        };
        cfg("cfg missing", {}, Missing);
        cfg("cfg empty", "");
        cfg("cfg binary garbage", garbage);
        cfg("cfg 1 MB line", mb);
        cfg("cfg cut in a number", line1.left(20));
        cfg("cfg no SchemeFile line", line1);
        cfg("cfg huge number", line1.left(10) + QByteArray(5000, '9') + "\r\nxp.col\r\n");
        cfg("cfg below 32 bits", "7 2 1 0 0 -2147483649 0 128 6\r\nxp.col\r\n");
        cfg("cfg two decimal points", "7.5.1 2 1 0 0 0 0 128 6\r\nxp.col\r\n");
        cfg("cfg exponent out of range", "7 2 1 0 0 3e9 0 128 6\r\nxp.col\r\n");
        cfg("cfg LF only", line1 + "\nxp.col\n", None, true);
        cfg("cfg CR only", line1 + "\rxp.col\r", None, true);
        cfg("cfg non-ASCII scheme", line1 + "\r\n" + nonAscii + "\r\n", None, true, QString::fromUtf8(nonAscii));
        cfg("cfg is a directory", {}, Directory);
        cfg("cfg read-only file", line1 + "\r\nBlue.col\r\n", ReadOnlyFile, true, "Blue.col");
        cfg("cfg read-only directory", {}, ReadOnlyDirectory);
        cfg("cfg is a FIFO", {}, Fifo);
        cfg("cfg over 1 MB", {}, 2 << 20);
        cfg("cfg disk full at exit", line1 + "\r\nBlue.col\r\n", FullDisk, true, "Blue.col");
        col("col empty", "", -1);
        col("col binary garbage", garbage, -1);
        col("col 1 MB line", mb + "\r\n" + block, 13, entry2);
        col("col cut in a block", block.left(block.indexOf("6;10;20")), 5, entry2);
        col("col cut in a number", block.left(block.indexOf("3;10;20") + 4), 2);
        col("col negative and huge", "s.col\r\n1;1;1\r\n2;2;2\r\n-9;" + QByteArray(400, '9') + ";300", 3,
            RGB(0, 255, 255));
        col("col LF only", QByteArray(block).replace("\r\n", "\n"), 13, entry2);
        col("col CR only", QByteArray(block).replace("\r\n", "\r"), 13, entry2);
        col("col non-ASCII name", Block(nonAscii, 1), 13, entry2, QString::fromUtf8(nonAscii));
        col("col is a directory", {}, 0, 0, "s.col", Directory);
        col("col is a FIFO", {}, 0, 0, "s.col", Fifo);
        col("col over 16 MB", block, 0, 0, "s.col", 17 << 20);
    }

    void damagedInput()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(int, obstacle);
        QFETCH(QString, name);
        QFETCH(int, expect);
        QFETCH(Colour, background);
        QTemporaryDir tmp;
        AppState state;
        state.AppDir = tmp.path() + "/";
        const QString path = tmp.filePath(file);
        if (obstacle > FullDisk) { // a sparse file of that many bytes, which is never read
            QFile big(path);
            QVERIFY(big.open(QIODevice::WriteOnly) && big.write(bytes) == bytes.size() && big.resize(obstacle));
        } else if (obstacle == Fifo) {
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        } else if (obstacle == Directory) {
            QVERIFY(QDir(tmp.path()).mkdir(file));
        } else if (obstacle == ReadOnlyDirectory) {
            QVERIFY(QDir(tmp.path()).mkdir("locked"));
            QVERIFY(QFile::setPermissions(tmp.filePath("locked"), QFile::ReadOwner | QFile::ExeOwner));
            state.AppDir = tmp.filePath("locked/");
        } else if (obstacle != Missing) {
            QVERIFY(WriteBytes(path, bytes));
            if (obstacle == ReadOnlyFile)
                QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
        }
        if (file == kCfg)
            CheckConfig(state, state.AppDir, obstacle, expect == 1, name);
        else
            CheckScheme(state, name, expect, background);
    }
};

QTEST_MAIN(ConfigFileTest)
#include "config_file_test.moc"
