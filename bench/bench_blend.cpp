// Blending through planes and constants, composites, and the filters of planes.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite;
    rastel::bench::AddBlendPlane(suite);
    rastel::bench::AddBlendConstant(suite);
    rastel::bench::AddBlendComposite(suite);
    rastel::bench::AddFilters(suite);
    return suite.Run(argc, argv);
}
