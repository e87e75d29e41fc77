// The file-name dialog control: dialog kind, start directory, results, current directory.
#include "ui/fn_dialog.h"
#include "ui/property_bag.h"
#include "kit_test_support.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace tallyon;

namespace {

// What the dialog looked like when it was about to be shown.
struct Seen {
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    QString directory;
    QString title;
    QStringList filters;
    QStringList selected;
};

// Installs a hook that records the dialog and then, inside its loop, runs `finish` on it.
Seen* Watch(std::function<void(QFileDialog&)> finish)
{
    static Seen seen;
    seen = Seen();
    FNDialog::SetDialogHook([finish](QFileDialog& dialog) {
        seen.mode = dialog.acceptMode();
        seen.directory = dialog.directory().absolutePath();
        seen.title = dialog.windowTitle();
        seen.filters = dialog.nameFilters();
        seen.selected = dialog.selectedFiles();
        QFileDialog* d = &dialog;
        QTimer::singleShot(0, d, [d, finish] { finish(*d); });
    });
    return &seen;
}

void Cancel(QFileDialog& dialog) { dialog.reject(); }

} // namespace

class FNDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void modeChoosesDialogKind_data();
    void modeChoosesDialogKind();
    void defaultDirWithOrWithoutSlash();
    void cancelReturnsEmptyAndKeepsDirectory();
    void confirmedFileElsewhereRestoresDirectory();
    void savedPropertiesAndEvents();

private:
    QString startDir_;
};

void FNDialogTest::init() { startDir_ = QDir::currentPath(); }

void FNDialogTest::cleanup()
{
    FNDialog::SetDialogHook(nullptr);
    QDir::setCurrent(startDir_);
}

void FNDialogTest::modeChoosesDialogKind_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("save");
    QTest::newRow("SAVE") << "SAVE" << true;
    QTest::newRow("save") << "save" << true;
    QTest::newRow("Save") << "Save" << true;
    QTest::newRow("OPEN") << "OPEN" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("blank") << "   " << false;
    QTest::newRow("other") << "saveas" << false;
}

void FNDialogTest::modeChoosesDialogKind()
{
    QFETCH(QString, mode);
    QFETCH(bool, save);
    FNDialog control;
    control.SetFileTypes("*.col;*.cfg");
    control.SetFileTypesName("Tallyon files");
    Seen* seen = Watch(Cancel);
    QCOMPARE(control.ShowDialog(mode), QString());
    QCOMPARE(seen->mode, save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    QCOMPARE(seen->title, QString("Select File"));
    QCOMPARE(seen->filters, QStringList{"Tallyon files (*.col *.cfg)"});
}

void FNDialogTest::defaultDirWithOrWithoutSlash()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString canonical = QDir(dir.path()).canonicalPath();
    FNDialog control;
    for (const QString& defaultDir : {dir.path(), dir.path() + "/", dir.path() + "//"}) {
        control.SetDefaultDir(defaultDir);
        Seen* seen = Watch(Cancel);
        control.ShowDialog("open");
        QCOMPARE(QDir(seen->directory).canonicalPath(), canonical);
    }
}

void FNDialogTest::cancelReturnsEmptyAndKeepsDirectory()
{
    QTemporaryDir other;
    FNDialog control;
    control.SetDefaultDir(other.path());
    Watch([&](QFileDialog& d) {
        QDir::setCurrent(other.path());  // the dialog may move the current directory
        d.reject();
    });
    QCOMPARE(control.ShowDialog("SAVE", "name.txt"), QString());
    QCOMPARE(QDir::currentPath(), startDir_);
}

void FNDialogTest::confirmedFileElsewhereRestoresDirectory()
{
    QTemporaryDir here;
    QTemporaryDir there;
    QDir::setCurrent(here.path());
    const QString herePath = QDir::currentPath();
    const QString target = there.filePath("puzzle.col");
    QFile file(target);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();

    FNDialog control;
    control.SetDefaultDir(there.path());
    Watch([&](QFileDialog& d) {
        QDir::setCurrent(there.path());
        d.selectFile(target);
        static_cast<QDialog&>(d).accept();
    });
    QCOMPARE(control.ShowDialog("OPEN"), target);
    QCOMPARE(QDir::currentPath(), herePath);

    // Saving: the initial file name is offered and a new name is returned in the start directory.
    Seen* seen = Watch([](QFileDialog& d) { static_cast<QDialog&>(d).accept(); });
    QCOMPARE(control.ShowDialog("save", "  new.cfg "), there.filePath("new.cfg"));
    QCOMPARE(seen->selected.value(0), there.filePath("new.cfg"));
    QCOMPARE(QDir::currentPath(), herePath);
}

void FNDialogTest::savedPropertiesAndEvents()
{
    FNDialog empty;
    empty.ReadProperties(PropertyBag());
    QCOMPARE(empty.Title(), QString("Select File"));
    QCOMPARE(empty.Caption(), QString("..."));
    QCOMPARE(empty.ForeColor(), RGB(0, 0, 0));
    QVERIFY(empty.Enabled());

    FNDialog source;
    source.SetBackColor(RGB(9, 8, 7));
    source.SetForeColor(RGB(200, 0, 0));
    source.SetTitle("Pick a scheme");
    source.SetFileTypes("*.col");
    source.SetFileTypesName("Schemes");
    source.SetDefaultDir("/tmp");
    source.SetCaption("Browse");
    PropertyBag bag;
    source.WriteProperties(bag);
    QCOMPARE(bag.Read("BackColor", 0).toUInt(), RGB(9, 8, 7));

    FNDialog copy;
    const Colour createdBack = copy.BackColor();
    copy.ReadProperties(bag);
    QCOMPARE(copy.BackColor(), createdBack);  // written, never read back
    QCOMPARE(copy.ForeColor(), RGB(200, 0, 0));
    QCOMPARE(copy.Title(), QString("Pick a scheme"));
    QCOMPARE(copy.FileTypes(), QString("*.col"));
    QCOMPARE(copy.FileTypesName(), QString("Schemes"));
    QCOMPARE(copy.DefaultDir(), QString("/tmp"));
    QCOMPARE(copy.Caption(), QString("Browse"));

    copy.resize(40, 25);
    copy.show();
    QVERIFY(QTest::qWaitForWindowExposed(&copy));
    QCOMPARE(copy.command1->geometry(), QRect(0, 0, 40, 25));
    QList<QVariant> down;
    connect(&copy, &FNDialog::MouseDown, this, [&](int& button, int& shift, float& x, float& y) {
        down = {button, shift, x, y};
    });
    QSignalSpy clicks(&copy, &FNDialog::Click);
    QTest::mouseClick(copy.command1, Qt::LeftButton, Qt::ShiftModifier, QPoint(6, 4));
    QCOMPARE(down, (QList<QVariant>{1, 1, 90.0F, 60.0F}));
    QCOMPARE(clicks.count(), 1);

    // A holding window that zeroes the character cancels it; the button then never sees Space.
    connect(&copy, &FNDialog::KeyPress, this, [](int& ascii) { ascii = 0; });
    QSignalSpy clicksBefore(&copy, &FNDialog::Click);
    QTest::keyClick(copy.command1, Qt::Key_Space);
    QCOMPARE(clicksBefore.count(), 0);
}

QTEST_MAIN(FNDialogTest)
#include "fn_dialog_test.moc"
