#include "first_paint.h"

#include <QApplication>
#include <QMainWindow>
#include <cstdlib>

/// The least that a program with a window can do.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    const cuedrill::bench::EndAtFirstPaint end(window);
    window.resize(1000, 720);
    window.show();
    QApplication::exec();
    return EXIT_FAILURE;
}
