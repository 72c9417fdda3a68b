#include "vx/graph/VxGraph2D.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    vx::TVx2DGraph graph;
    return graph.width() > 0 ? 0 : 1;
}
