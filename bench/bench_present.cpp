// Pictures on the screen. Needs an X server, real or in memory.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite({{640, 480}, {1920, 1080}});
    suite.MeasureBy(rastel::bench::Watch::Clock);   // the server works for us
    rastel::bench::AddPresent(suite);
    return suite.Run(argc, argv);
}
