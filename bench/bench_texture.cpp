// Textured triangles, and pictures turned onto others.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite({{10, 10}, {100, 100}, {640, 480}, {1000, 1000}});
    rastel::bench::AddTriangles(suite);
    rastel::bench::AddRotations(suite);
    return suite.Run(argc, argv);
}
