// Composites to and from GDI+ bitmaps.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite({{16, 16}, {640, 480}});
    rastel::bench::AddExchange(suite);
    return suite.Run(argc, argv);
}
