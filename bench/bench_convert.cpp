// Pixels in the formats of displays.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite;
    rastel::bench::AddConvert(suite);
    suite.Aim("to 565", 0.9, 640 * 480);
    suite.Aim("to 555", 0.9, 640 * 480);
    suite.Aim("to 24 bits", 0.8, 640 * 480);
    suite.Aim("to 32 bits", 1.0, 640 * 480);
    suite.Aim("to 8 bits", 4.0, 640 * 480);
    return suite.Run(argc, argv);
}
