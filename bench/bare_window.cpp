// The yardstick of the footprint benchmark: a bare Qt window of about the main window's size,
// with a File menu and a label, started and shown the way Tallyon is.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle("Bare");
    window.menuBar()->addMenu("File")->addAction("Exit", &app, &QApplication::quit);
    window.setCentralWidget(new QLabel("A bare Qt window"));
    window.resize(600, 500);
    window.show();
    return QApplication::exec();
}
