// Icons out of files and modules.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite({{16, 16}, {48, 48}});
    rastel::bench::AddIcons(suite);
    return suite.Run(argc, argv);
}
