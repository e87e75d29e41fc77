// Tests of tallyon.cfg: the fresh install, round trips, the reader's separators and damaged
// files, and a file system in the way.
#include "shell/config_file.h"
#include "shell_test_support.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

const QByteArray kFreshFile = " 7  2  1  0  0  16777215  0  128  6\r\nxp.col\r\n";

QString InfoText(const QString& path)
{
    return "Configuration file:\r\n" + path + "\r\ncould not be accessed, new file will be created";
}

QString CriticalText(const QString& path)
{
    return "Configuration file:\r\n" + path + "\r\ncould not be accessed, options not saved";
}

bool SameSettings(const Settings& a, const Settings& b)
{
    return a.GridSize == b.GridSize && a.NodeShape == b.NodeShape
        && a.GridLineWidth == b.GridLineWidth && a.ShapeColour == b.ShapeColour
        && a.GridColour == b.GridColour && a.FontColour == b.FontColour
        && a.PathDirection == b.PathDirection && a.UserLineColour == b.UserLineColour
        && a.PrintLineWidth == b.PrintLineWidth && a.SchemeFile == b.SchemeFile;
}

Settings Custom()
{
    Settings s;
    s.GridSize = 4;
    s.NodeShape = 1;
    s.GridLineWidth = 3;
    s.ShapeColour = RGB(1, 2, 3);
    s.GridColour = 0xFFFFFFFFu;     // top byte set: must still read back
    s.FontColour = RGB(255, 255, 255);
    s.PathDirection = -4;
    s.UserLineColour = RGB(128, 0, 0);
    s.PrintLineWidth = 2147483647;
    s.SchemeFile = "Blue.col";
    return s;
}

} // namespace

class ConfigFileTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;
    AppState state_;

    QString CfgPath() const { return ConfigFilePath(state_); }

private slots:
    void init()
    {
        QVERIFY(dir_.isValid());
        QFile::remove(dir_.filePath("tallyon.cfg"));
        state_ = AppState{};
        state_.AppDir = dir_.path() + "/";
    }

    void freshInstallWritesTheFileAtOnce()
    {
        MessageLog log;
        QVERIFY(!ReadConfig(state_));
        QCOMPARE(log.calls.size(), 1);
        QCOMPARE(log.calls[0].first, InfoText(dir_.path() + "/tallyon.cfg"));
        QCOMPARE(log.calls[0].second, QString("vbok+vbinformation"));
        QCOMPARE(ReadBytes(CfgPath()), kFreshFile);
        QVERIFY(SameSettings(state_.settings, FreshInstallSettings()));
        QCOMPARE(DirectoryEntries(dir_.path()), QStringList{"tallyon.cfg"});

        // The file just written reads back without a message.
        AppState again;
        again.AppDir = state_.AppDir;
        QVERIFY(ReadConfig(again));
        QCOMPARE(log.calls.size(), 1);
        QVERIFY(SameSettings(again.settings, FreshInstallSettings()));
    }

    void writeThenReadRoundTrips()
    {
        MessageLog log;
        state_.settings = Custom();
        QVERIFY(WriteConfig(state_, 9));
        QCOMPARE(state_.settings.GridSize, 9);     // taken from the size shown
        AppState back;
        back.AppDir = state_.AppDir;
        QVERIFY(ReadConfig(back));
        QVERIFY(SameSettings(back.settings, state_.settings));
        QVERIFY(log.calls.isEmpty());
        const QByteArray bytes = ReadBytes(CfgPath());
        QVERIFY(bytes.startsWith(" 9  1  3  197121 -1  16777215 -4  128  2147483647\r\n"));
        QVERIFY(bytes.endsWith("\r\nBlue.col\r\n"));
    }

    void parsesSeparatorsAndChecks_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<int>>("numbers");     // the nine as read (colours as ints)
        QTest::addColumn<QString>("scheme");
        const QList<int> plain{7, 2, 1, 0, 0, 16777215, 0, 128, 6};
        QTest::newRow("writer's form") << kFreshFile << plain << "xp.col";
        QTest::newRow("several lines") << QByteArray("7\r\n2 1\r\n0\r\n0 16777215\r\n0\r\n128\r\n6\r\nxp.col\r\n")
                                       << plain << "xp.col";
        QTest::newRow("commas") << QByteArray("7,2,1,0,0,16777215,0,128,6\r\nxp.col") << plain << "xp.col";
        QTest::newRow("commas and blanks") << QByteArray("  7 , 2,\t1 ,0,0,16777215,0,128,6  \r\n  xp.col  \r\n")
                                           << plain << "xp.col";
        QTest::newRow("scheme after a comma") << QByteArray("7 2 1 0 0 16777215 0 128 6,xp.col\r\n")
                                              << plain << "xp.col";
        QTest::newRow("LF only") << QByteArray("7 2 1 0 0 16777215 0 128 6\nxp.col\n") << plain << "xp.col";
        QTest::newRow("CR only") << QByteArray("7 2 1 0 0 16777215 0 128 6\rxp.col\r") << plain << "xp.col";
        QTest::newRow("empty field reads 0") << QByteArray("7,2,1,,0,16777215,0,128,6\r\nxp.col\r\n")
                                             << plain << "xp.col";
        QTest::newRow("width 0 -> 1") << QByteArray("7 2 0 0 0 16777215 0 128 6\r\nxp.col\r\n")
                                      << plain << "xp.col";
        QTest::newRow("negative width -> 1") << QByteArray("7 2 -5 0 0 16777215 0 128 6\r\nxp.col\r\n")
                                             << plain << "xp.col";
        QTest::newRow("out of range kept") << QByteArray("3 9 1 0 0 16777215 7 128 -1\r\nxp.col\r\n")
                                           << QList<int>{3, 9, 1, 0, 0, 16777215, 7, 128, -1} << "xp.col";
        QTest::newRow("comma cuts the scheme") << QByteArray(" 7  2  1  0  0  16777215  0  128  6\r\nmy,scheme.col\r\n")
                                               << plain << "my";
        QTest::newRow("empty second line") << QByteArray(" 7  2  1  0  0  16777215  0  128  6\r\n\r\n")
                                           << plain << "";
        QTest::newRow("non-ASCII scheme") << QByteArray(" 7  2  1  0  0  16777215  0  128  6\r\nGr\xc3\xbcn \xe9\x85\x8d.col\r\n")
                                          << plain << QString::fromUtf8("Gr\xc3\xbcn \xe9\x85\x8d.col");
        QTest::newRow("32-bit limits") << QByteArray("2147483647 -2147483648 1 0 0 0 0 0 0\r\nx\r\n")
                                       << QList<int>{2147483647, -2147483647 - 1, 1, 0, 0, 0, 0, 0, 0} << "x";
    }

    void parsesSeparatorsAndChecks()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QList<int>, numbers);
        QFETCH(QString, scheme);
        const auto s = ParseConfig(bytes);
        QVERIFY(s.has_value());
        const QList<int> read{s->GridSize, s->NodeShape, s->GridLineWidth,
                              int(s->ShapeColour), int(s->GridColour), int(s->FontColour),
                              s->PathDirection, int(s->UserLineColour), s->PrintLineWidth};
        QCOMPARE(read, numbers);
        QCOMPARE(s->SchemeFile, scheme);
    }

    void damagedFileIsReplaced_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage.append(char((i * 131 + 7) % 256));
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("binary garbage") << garbage;
        QTest::newRow("1 MB line") << QByteArray(1 << 20, '7');
        QTest::newRow("1 MB of blanks") << QByteArray(1 << 20, ' ');
        QTest::newRow("cut in a number") << QByteArray(" 7  2  1  0  0  1677");
        QTest::newRow("no second line") << QByteArray(" 7  2  1  0  0  16777215  0  128  6");
        QTest::newRow("no second line, CR LF") << QByteArray(" 7  2  1  0  0  16777215  0  128  6\r\n");
        QTest::newRow("text for a number") << QByteArray(" 7  2  x  0  0  16777215  0  128  6\r\nxp.col\r\n");
        QTest::newRow("number with text") << QByteArray(" 7  2  1  0  0  1677abc  0  128  6\r\nxp.col\r\n");
        QTest::newRow("decimal point") << QByteArray(" 7.5  2  1  0  0  0  0  128  6\r\nxp.col\r\n");
        QTest::newRow("beyond 32 bits") << QByteArray(" 7  2  1  0  0  4294967295  0  128  6\r\nxp.col\r\n");
        QTest::newRow("huge number") << (QByteArray(" 7  2  1  ") + QByteArray(5000, '9') + "\r\nxp.col\r\n");
        QTest::newRow("lone sign") << QByteArray(" 7  2  1  -  0  0  0  128  6\r\nxp.col\r\n");
        QTest::newRow("NUL bytes") << QByteArray(" 7\0 2", 5);
    }

    void damagedFileIsReplaced()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(WriteBytes(CfgPath(), bytes));
        state_.settings.GridSize = 9;     // read values never survive a failed read
        MessageLog log;
        QVERIFY(!ReadConfig(state_));
        QCOMPARE(log.calls.size(), 1);
        QCOMPARE(log.calls[0].second, QString("vbok+vbinformation"));
        QVERIFY(SameSettings(state_.settings, FreshInstallSettings()));
        QCOMPARE(ReadBytes(CfgPath()), kFreshFile);
    }

    // A directory where the file should be: read -> recovery whose write fails silently;
    // write -> critical message. The directory is never touched.
    void directoryInTheWay()
    {
        QVERIFY(QDir(dir_.path()).mkdir("tallyon.cfg"));
        MessageLog log;
        QVERIFY(!ReadConfig(state_));
        QVERIFY(SameSettings(state_.settings, FreshInstallSettings()));
        QVERIFY(!WriteConfig(state_, 7));
        QCOMPARE(log.calls.size(), 2);
        QCOMPARE(log.calls[0].first, InfoText(CfgPath()));
        QCOMPARE(log.calls[1].first, CriticalText(CfgPath()));
        QCOMPARE(log.calls[1].second, QString("vbok+vbcritical"));
        QVERIFY(QFileInfo(CfgPath()).isDir());
        QCOMPARE(DirectoryEntries(dir_.path()), QStringList{"tallyon.cfg"});
        QVERIFY(QDir(dir_.path()).rmdir("tallyon.cfg"));
    }

    // A read-only file reads normally; the exit's write fails and the old file stays.
    void readOnlyFile()
    {
        const QByteArray old = " 5  1  2  0  0  0  1  0  3\r\nBlue.col\r\n";
        QVERIFY(WriteBytes(CfgPath(), old));
        QVERIFY(QFile::setPermissions(CfgPath(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        MessageLog log;
        QVERIFY(ReadConfig(state_));
        QCOMPARE(state_.settings.GridSize, 5);
        QCOMPARE(state_.settings.SchemeFile, QString("Blue.col"));
        QVERIFY(!WriteConfig(state_, 8));
        QCOMPARE(log.calls.size(), 1);
        QCOMPARE(log.calls[0].first, CriticalText(CfgPath()));
        QCOMPARE(ReadBytes(CfgPath()), old);
        QCOMPARE(DirectoryEntries(dir_.path()), QStringList{"tallyon.cfg"});
        QVERIFY(QFile::setPermissions(CfgPath(), QFile::ReadOwner | QFile::WriteOwner));
    }

    // A read-only directory: the recovery write fails silently, the exit's write reports.
    void readOnlyDirectory()
    {
        QVERIFY(QDir(dir_.path()).mkdir("locked"));
        const QString locked = dir_.filePath("locked");
        QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner));
        state_.AppDir = locked + "/";
        MessageLog log;
        QVERIFY(!ReadConfig(state_));
        QVERIFY(SameSettings(state_.settings, FreshInstallSettings()));
        QVERIFY(!WriteConfig(state_, 7));
        QCOMPARE(log.calls.size(), 2);
        QCOMPARE(log.calls[1].first, CriticalText(CfgPath()));
        QVERIFY(DirectoryEntries(locked).isEmpty());
        QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    // A program directory that is really a regular file: nothing can be opened under it.
    void pathUnderARegularFile()
    {
        const QString file = dir_.filePath("plain");
        QVERIFY(WriteBytes(file, "x"));
        state_.AppDir = file + "/";
        MessageLog log;
        QVERIFY(!ReadConfig(state_));
        QVERIFY(!WriteConfig(state_, 7));
        QCOMPARE(log.calls.size(), 2);
        QCOMPARE(log.calls[1].second, QString("vbok+vbcritical"));
        QCOMPARE(ReadBytes(file), QByteArray("x"));
    }
};

QTEST_MAIN(ConfigFileTest)
#include "config_file_test.moc"
