// The algebra of 8-bit planes.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite;
    rastel::bench::AddPlaneValues(suite);
    rastel::bench::AddPlaneMasks(suite);
    return suite.Run(argc, argv);
}
