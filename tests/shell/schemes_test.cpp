// Tests of the colour schemes: listing, both load variants, damaged files, the shipped
// all.col and the report for a missing schemes file.
#include "shell/schemes.h"
#include "shell/text_file.h"
#include "shell_test_support.h"

#include <QApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <sys/wait.h>
#include <unistd.h>

using namespace tallyon;
using namespace tallyon::testing;

namespace {

// A block whose entry i is RGB(base + i, 10, 20), ending with CR LF.
QByteArray Block(const QByteArray& name, int base)
{
    QByteArray b = name + "\r\n";
    for (int i = 0; i < 13; ++i)
        b += QByteArray::number(base + i) + ";10;20\r\n";
    return b;
}

SchemeTable Marked()
{
    SchemeTable t;
    for (int i = 0; i < 14; ++i)
        t[i] = RGB(0, 0, 200 + i);
    return t;
}

double Luminance(Colour c)
{
    auto ch = [](int v) {
        const double s = v / 255.0;
        return s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * ch(RedOf(c)) + 0.7152 * ch(GreenOf(c)) + 0.0722 * ch(BlueOf(c));
}

double ContrastWithDarkText(Colour c)
{
    return (Luminance(c) + 0.05) / (Luminance(fixed::DarkText) + 0.05);
}

} // namespace

class SchemesTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;
    AppState state_;

    QString SchemesPath() const { return SchemesFilePath(state_); }

private slots:
    void init()
    {
        QVERIFY(dir_.isValid());
        state_ = AppState{};
        state_.AppDir = dir_.path() + "/";
        state_.SchemeColours = Marked();
        state_.settings.SchemeFile = "Blue.col";
    }

    void listsNamesInFileOrder_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("xp and Blue") << (Block("xp.col", 1) + Block("Blue.col", 2)) << QStringList{"xp", "Blue"};
        QTest::newRow("exact case, first mark") << QByteArray("a.COL\r\nb.col.col\r\nx .col y\r\n.col\r\n")
                                                << QStringList{"b", "x ", ""};
        QTest::newRow("LF only") << QByteArray("one.col\n1;2;3\ntwo.col\n") << QStringList{"one", "two"};
        QTest::newRow("CR only") << QByteArray("one.col\r1;2;3\rtwo.col") << QStringList{"one", "two"};
        QTest::newRow("non-ASCII") << QByteArray("Gr\xc3\xbcn.col\r\n\xe9\x85\x8d.col\r\n")
                                   << QStringList{QString::fromUtf8("Gr\xc3\xbcn"), QString::fromUtf8("\xe9\x85\x8d")};
        QTest::newRow("empty file") << QByteArray() << QStringList{};
    }

    void listsNamesInFileOrder()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, names);
        QVERIFY(WriteBytes(SchemesPath(), bytes));
        const auto listed = ListSchemes(state_);
        QVERIFY(listed.has_value());
        QCOMPARE(*listed, names);
    }

    void listingAMissingFileFails()
    {
        QFile::remove(SchemesPath());
        QVERIFY(!ListSchemes(state_).has_value());
        QVERIFY(QDir(dir_.path()).mkdir("all.col"));    // a directory cannot be read either
        QVERIFY(!ListSchemes(state_).has_value());
        QVERIFY(QDir(dir_.path()).rmdir("all.col"));
    }

    void channelValues_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("value");
        QTest::newRow("plain") << "20" << 20;
        QTest::newRow("above 255") << "300" << 255;
        QTest::newRow("huge") << QString(400, '9') << 255;
        QTest::newRow("negative") << "-5" << 0;
        QTest::newRow("leading value") << " 7abc" << 7;
        QTest::newRow("no digits") << "abc" << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("half to even down") << "12.5" << 12;
        QTest::newRow("half to even up") << "13.5" << 14;
        QTest::newRow("fraction") << "0.7" << 1;
        QTest::newRow("plus sign") << "+9" << 9;
    }

    void channelValues()
    {
        QFETCH(QString, field);
        QFETCH(int, value);
        QCOMPARE(SchemeChannelValue(field), value);
    }

    void startupLoadFillsTheTable()
    {
        QVERIFY(WriteBytes(SchemesPath(), Block("xp.col", 1) + "Red.col\r\n0;0;0\r\n1;1;1\r\n300;20;12\r\n"
                                              + QByteArray("9;8;7;6\r\n").repeated(10)));
        MessageLog log;
        QCOMPARE(LoadSchemeAtStartup(state_, "Red.col"), RGB(255, 20, 12));
        QCOMPARE(state_.SchemeColours[2], RGB(255, 20, 12));
        QCOMPARE(state_.SchemeColours[12], RGB(9, 8, 7));
        QCOMPARE(state_.SchemeColours[13], Marked()[13]);     // never from the file
        QCOMPARE(state_.settings.SchemeFile, QString("Blue.col"));
        QVERIFY(log.calls.isEmpty());
    }

    void startupLoadNeedsTheExactName()
    {
        QVERIFY(WriteBytes(SchemesPath(), Block("xp.col", 1)));
        MessageLog log;
        QCOMPARE(LoadSchemeAtStartup(state_, "XP.col"), Colour(0));
        QCOMPARE(log.calls.size(), 1);
        QCOMPARE(log.calls[0].first, QString("Colour Scheme: XP.col not found"));
        QCOMPARE(log.calls[0].second, QString("vbok+vbcritical"));
        QCOMPARE(state_.settings.SchemeFile, QString("xp.col"));
        QVERIFY(state_.SchemeColours == Marked());
    }

    void missingFileLoadsQuietly()
    {
        QFile::remove(SchemesPath());
        MessageLog log;
        QCOMPARE(LoadSchemeAtStartup(state_, "xp.col"), Colour(0));
        QVERIFY(QDir::setCurrent(dir_.path()));
        QCOMPARE(LoadSchemePreview(state_, "xp.col"), Colour(0));
        QVERIFY(log.calls.isEmpty());
        QVERIFY(state_.SchemeColours == Marked());
        QCOMPARE(state_.settings.SchemeFile, QString("Blue.col"));
    }

    void previewBuiltInDefault()
    {
        MessageLog log;
        const QColor base = QApplication::palette().color(QPalette::Base);
        const Colour expected = RGB(base.red(), base.green(), base.blue());
        for (const QString name : {"DEFAULT.COL", "default.col", "Default.Col"}) {
            state_.SchemeColours = Marked();
            QCOMPARE(LoadSchemePreview(state_, name), expected);
            SchemeTable want = Marked();
            want[2] = want[4] = expected;
            want[3] = RGB(20, 20, 200);
            QVERIFY(state_.SchemeColours == want);
        }
        QVERIFY(log.calls.isEmpty());
        // The start-up variant has no built-in default.
        QVERIFY(WriteBytes(SchemesPath(), Block("xp.col", 1)));
        QCOMPARE(LoadSchemeAtStartup(state_, "default.col"), Colour(0));
        QCOMPARE(log.calls.size(), 1);
    }

    // The preview opens all.col in the current directory, not in AppDir.
    void previewReadsTheCurrentDirectory()
    {
        QTemporaryDir other;
        QVERIFY(WriteBytes(SchemesPath(), Block("xp.col", 1)));
        QVERIFY(WriteBytes(other.filePath("all.col"), Block("xp.col", 100)));
        QVERIFY(QDir::setCurrent(other.path()));
        MessageLog log;
        QCOMPARE(LoadSchemePreview(state_, "xp.col"), RGB(102, 10, 20));
        QCOMPARE(LoadSchemeAtStartup(state_, "xp.col"), RGB(3, 10, 20));

        QCOMPARE(LoadSchemePreview(state_, "none.col"), Colour(0));
        QCOMPARE(log.calls.size(), 1);
        QCOMPARE(log.calls[0].first, QString("Color Scheme: none.col not found"));
        QCOMPARE(log.calls[0].second, QString("vbok"));
        QCOMPARE(state_.settings.SchemeFile, QString("default.col"));
        QVERIFY(QDir::setCurrent(QDir::tempPath()));
    }

    void menuColouringRule_data()
    {
        QTest::addColumn<QString>("scheme");
        QTest::addColumn<bool>("colours");
        QTest::newRow("xp") << "xp.col" << true;
        QTest::newRow("default") << "default.col" << false;
        QTest::newRow("mydefault") << "mydefault.col" << false;
        QTest::newRow("mixed case") << "MyDeFaUlT.col" << false;
        QTest::newRow("defaul only") << "defaul.col" << true;
        QTest::newRow("empty") << "" << true;
    }

    void menuColouringRule()
    {
        QFETCH(QString, scheme);
        QFETCH(bool, colours);
        QCOMPARE(SchemeColoursMenu(scheme), colours);
    }

    // Damaged files: a load never crashes; it stops at the damage, keeping what it read.
    void damagedSchemes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("entriesRead");     // -1: not found
        QTest::addColumn<int>("base");
        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage.append(char((i * 97 + 3) % 256));
        const QByteArray whole = Block("s.col", 1);
        QTest::newRow("empty file") << QByteArray() << "s.col" << -1 << 0;
        QTest::newRow("binary garbage") << garbage << "s.col" << -1 << 0;
        QTest::newRow("garbage then block") << (garbage + "\r\n" + whole) << "s.col" << 13 << 1;
        QTest::newRow("1 MB line") << (QByteArray(1 << 20, 'x') + "\r\n" + whole) << "s.col" << 13 << 1;
        QTest::newRow("1 MB colour line") << (QByteArray("s.col\r\n1;10;20\r\n") + QByteArray(1 << 20, '9') + "\r\n")
                                          << "s.col" << 1 << 1;
        QTest::newRow("cut in a block") << whole.left(whole.indexOf("6;10;20")) << "s.col" << 5 << 1;
        QTest::newRow("cut in a number") << whole.left(whole.indexOf("6;10;20") + 4) << "s.col" << 5 << 1;
        QTest::newRow("header at the end") << QByteArray("s.col") << "s.col" << 0 << 1;
        QTest::newRow("short line") << QByteArray("s.col\r\n1;10;20\r\n2;10\r\n3;10;20\r\n") << "s.col" << 1 << 1;
        QTest::newRow("LF only") << QByteArray(whole).replace("\r\n", "\n") << "s.col" << 13 << 1;
        QTest::newRow("CR only") << QByteArray(whole).replace("\r\n", "\r") << "s.col" << 13 << 1;
        QTest::newRow("non-ASCII name") << Block("Gr\xc3\xbcn \xe9\x85\x8d.col", 1)
                                        << QString::fromUtf8("Gr\xc3\xbcn \xe9\x85\x8d.col") << 13 << 1;
        QTest::newRow("header with a blank") << Block("s.col ", 1) << "s.col" << -1 << 0;
    }

    void damagedSchemes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        QFETCH(int, entriesRead);
        QFETCH(int, base);
        QVERIFY(WriteBytes(SchemesPath(), bytes));
        QVERIFY(ListSchemes(state_).has_value());
        MessageLog log;
        const Colour result = LoadSchemeAtStartup(state_, name);
        QCOMPARE(log.calls.size(), entriesRead < 0 ? 1 : 0);
        SchemeTable want = Marked();
        for (int i = 0; i < std::max(entriesRead, 0); ++i)
            want[i] = RGB(base + i, 10, 20);
        QVERIFY(state_.SchemeColours == want);
        QCOMPARE(result, entriesRead > 2 ? want[2] : Colour(0));
    }

    // The schemes shipped with the program: well formed, and readable with dark text.
    void shippedSchemesAreSound()
    {
        const QByteArray bytes = ReadBytes(TALLYON_DATA_DIR "/all.col");
        QVERIFY(!bytes.isEmpty());
        QVERIFY(bytes.endsWith("\r\n"));
        QCOMPARE(bytes.count('\r'), bytes.count('\n'));
        QVERIFY(!bytes.contains("\r\n\r\n"));
        const QStringList lines = SplitLines(QString::fromUtf8(bytes));
        QCOMPARE(lines.size() % 14, 0);
        state_.AppDir = TALLYON_DATA_DIR "/";
        const QStringList names = *ListSchemes(state_);
        QCOMPARE(names.size(), lines.size() / 14);
        QVERIFY(names.size() >= 8);
        QCOMPARE(names.first(), QString("xp"));
        bool dark = false;
        bool highContrast = false;
        MessageLog log;
        for (int s = 0; s < names.size(); ++s) {
            QCOMPARE(lines[s * 14], names[s] + ".col");
            for (int i = 1; i < 14; ++i)
                QVERIFY2(QRegularExpression("^\\d{1,3};\\d{1,3};\\d{1,3}$").match(lines[s * 14 + i]).hasMatch(),
                         qPrintable(lines[s * 14 + i]));
            state_.SchemeColours = Marked();
            const Colour background = LoadSchemeAtStartup(state_, names[s] + ".col");
            QCOMPARE(background, state_.SchemeColours[2]);
            for (int entry : {2, 3, 4, 5})
                QVERIFY2(ContrastWithDarkText(state_.SchemeColours[entry]) >= 4.5,
                         qPrintable(names[s] + " entry " + QString::number(entry)));
            dark = dark || Luminance(background) < 0.3;
            highContrast = highContrast || (background == RGB(255, 255, 255)
                                             && state_.SchemeColours[4] == RGB(255, 255, 0));
        }
        QVERIFY(log.calls.isEmpty());
        QVERIFY(dark);
        QVERIFY(highContrast);
        state_.SchemeColours = Marked();
        QCOMPARE(LoadSchemeAtStartup(state_, "xp.col"), RGB(236, 233, 216));
    }

    // A missing schemes file ends the program with code 1 and a report naming the path.
    void missingSchemesFileIsFatal()
    {
        int out[2];
        QCOMPARE(pipe(out), 0);
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            dup2(out[1], STDERR_FILENO);
            close(out[0]);
            SetMessageInterceptor([](const QString& message, const QString& style) {
                const bool ok = message == "Colour schemes file:\r\n/nowhere/all.col\r\nnot found, the program cannot start"
                             && style == "vbok+vbcritical";
                if (!ok)
                    _exit(3);
                return 1;
            });
            FailMissingSchemes("/nowhere/all.col");
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
        QVERIFY(report.contains("Tallyon: colour schemes file not found: /nowhere/all.col\n"));
    }
};

QTEST_MAIN(SchemesTest)
#include "schemes_test.moc"
