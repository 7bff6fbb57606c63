// Operations on colours: copy, fill, key copy, shadow, stretch.
#include "families.h"
#include "support/suite.h"

int main(int argc, char** argv) {
    rastel::bench::Suite suite;
    rastel::bench::AddCopy(suite);
    rastel::bench::AddFill(suite);
    rastel::bench::AddKeyCopy(suite);
    rastel::bench::AddShadow(suite);
    rastel::bench::AddStretch(suite);
    return suite.Run(argc, argv);
}
