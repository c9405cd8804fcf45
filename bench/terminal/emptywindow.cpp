// The least that a program with a window does: shows it, paints it, goes.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1000, 700);
    window.show();
    QApplication::processEvents();
    return 0;
}
