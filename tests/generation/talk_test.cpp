// Talk lines as talk commands.
#include "support/rows.h"

namespace tvml {
namespace {

TEST(Talk, Rows) {
    checkRows("generation/talk.rows", [](const Row& row) { return row.body(); });
}

} // namespace
} // namespace tvml
