#include "first_paint.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <cstdlib>

/// The floor of the program's start: shows an empty window, or one with the text of the command line.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    const cuedrill::bench::EndAtFirstPaint end(window);
    if (argc > 1 && *argv[1] != '\0')
        window.setCentralWidget(new QLabel(QString::fromLocal8Bit(argv[1])));
    window.resize(1000, 720);
    window.show();
    QApplication::exec();
    return EXIT_FAILURE;
}
