// The least that a program with a window does: shows it, paints it, says so, goes.
#include <QApplication>
#include <QMainWindow>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1000, 700);
    window.show();
    QApplication::processEvents();
    std::puts("The window can be used.");
    std::fflush(stdout);
    return 0;
}
