// Tallyon's entry point: the application object, the main window and the event loop.
#include "core/random.h"
#include "shell/app_dir.h"
#include "shell/form1.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QIcon>
#include <QStyleFactory>

namespace {

// Lets the windows repaint while a puzzle is made, at most every 15 ms; clicks wait until the
// puzzle is done, so a second request cannot start inside the first.
void ProcessPendingEvents()
{
    static QElapsedTimer since;
    if (since.isValid() && since.elapsed() < 15)
        return;
    since.start();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("Tallyon");
    QApplication::setDesktopFileName("io.github.tallyon.Tallyon");
    QApplication::setWindowIcon(QIcon(":/icons/tallyon.png"));
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    tallyon::SetPendingEventsHandler(ProcessPendingEvents);

    tallyon::AppState state;
    state.AppDir = tallyon::ApplicationDir();
    tallyon::Form1 window(state);
    window.Start();
    window.show();
    return QApplication::exec();
}
