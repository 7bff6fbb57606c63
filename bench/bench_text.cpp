// Text.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite({{1920, 200}});
    rastel::bench::AddText(suite);
    return suite.Run(argc, argv);
}
