#include "first_paint.h"
#include "program/program.h"

#include <QApplication>
#include <QMainWindow>
#include <cstdlib>

/// Runs the whole program on the course given on the command line, until its window is painted.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    cuedrill::program::Program program;
    const cuedrill::bench::EndAtFirstPaint end(program.form1().widget());
    program.run(argc > 1 ? argv[1] : "");
    return EXIT_FAILURE;
}
