// The file-name dialog control: dialog kind, start directory, result, current directory.
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
    void cleanup() { FNDialog::SetDialogHook(nullptr); }

    // "SAVE" in any case asks for a file to save, anything else for one to open; the
    // dialog starts in the default directory, given with or without its final "/".
    void modeAndDefaultDirChooseTheDialog()
    {
        QTemporaryDir dir;
        FNDialog control;
        const struct {
            QString mode, defaultDir;
            QFileDialog::AcceptMode kind;
        } cases[] = {{"SAVE", dir.path(), QFileDialog::AcceptSave},
                     {"save", dir.path() + "/", QFileDialog::AcceptSave},
                     {"OPEN", dir.path(), QFileDialog::AcceptOpen},
                     {"", dir.path(), QFileDialog::AcceptOpen},
                     {"   ", dir.path(), QFileDialog::AcceptOpen}};
        for (const auto& c : cases) {
            control.SetDefaultDir(c.defaultDir);
            QFileDialog::AcceptMode shown{};
            QString in;
            Watch([&](QFileDialog& d) {
                shown = d.acceptMode();
                in = d.directory().canonicalPath();
                d.reject();
            });
            QCOMPARE(control.ShowDialog(c.mode), QString());
            QCOMPARE(shown, c.kind);
            QCOMPARE(in, QDir(dir.path()).canonicalPath());
        }
    }

    // The dialog may move the current directory; the control puts it back, chosen or cancelled.
    void resultAndCurrentDirectoryRestored()
    {
        const QString start = QDir::currentPath();
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
            QCOMPARE(QDir::currentPath(), start);
        }
    }
};

QTEST_MAIN(FNDialogTest)
#include "fn_dialog_test.moc"
