// The file-name dialog control: dialog kind, start directory, results, current directory.
#include "ui/fn_dialog.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace tallyon;

namespace {

// Installs a hook that, inside the dialog's loop, runs `finish` on it.
void Watch(std::function<void(QFileDialog&)> finish)
{
    FNDialog::SetDialogHook([finish](QFileDialog& dialog) {
        QFileDialog* d = &dialog;
        QTimer::singleShot(0, d, [d, finish] { finish(*d); });
    });
}

} // namespace

class FNDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init() { startDir_ = QDir::currentPath(); }
    void cleanup()
    {
        FNDialog::SetDialogHook(nullptr);
        QDir::setCurrent(startDir_);
    }
    void modeChoosesDialogKind_data();
    void modeChoosesDialogKind();
    void defaultDirWithOrWithoutSlash();
    void resultAndCurrentDirectoryRestored();

private:
    QString startDir_;
};

void FNDialogTest::modeChoosesDialogKind_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("save");
    QTest::newRow("SAVE") << "SAVE" << true;
    QTest::newRow("save") << "save" << true;
    QTest::newRow("OPEN") << "OPEN" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("blank") << "   " << false;
}

void FNDialogTest::modeChoosesDialogKind()
{
    QFETCH(QString, mode);
    QFETCH(bool, save);
    FNDialog control;
    QFileDialog::AcceptMode shown{};
    Watch([&](QFileDialog& d) {
        shown = d.acceptMode();
        d.reject();
    });
    QCOMPARE(control.ShowDialog(mode), QString());
    QCOMPARE(shown, save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
}

void FNDialogTest::defaultDirWithOrWithoutSlash()
{
    QTemporaryDir dir;
    FNDialog control;
    for (const QString& defaultDir : {dir.path(), dir.path() + "/"}) {
        control.SetDefaultDir(defaultDir);
        QString shown;
        Watch([&](QFileDialog& d) {
            shown = d.directory().canonicalPath();
            d.reject();
        });
        control.ShowDialog("open");
        QCOMPARE(shown, QDir(dir.path()).canonicalPath());
    }
}

// The dialog may move the current directory; the control puts it back, chosen or cancelled.
void FNDialogTest::resultAndCurrentDirectoryRestored()
{
    QTemporaryDir there;
    const QString target = there.filePath("puzzle.col");
    QVERIFY(QFile(target).open(QIODevice::WriteOnly));
    FNDialog control;
    control.SetDefaultDir(there.path());
    for (const QString& chosen : {QString(), target}) {
        Watch([&](QFileDialog& d) {
            QDir::setCurrent(there.path());
            if (chosen.isEmpty())
                return d.reject();
            d.selectFile(chosen);
            static_cast<QDialog&>(d).accept();
        });
        QCOMPARE(control.ShowDialog("OPEN"), chosen);
        QCOMPARE(QDir::currentPath(), startDir_);
    }
}

QTEST_MAIN(FNDialogTest)
#include "fn_dialog_test.moc"
