#include "first_paint.h"

#include <QApplication>
#include <QMainWindow>
#include <cstdlib>

/// The floor of the program's start: shows an empty window.
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
