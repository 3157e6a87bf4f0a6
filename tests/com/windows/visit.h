#pragma once

#include "tests/com/support/page_objects.h"

namespace pradelis::test {

/// The database of the environment's PRADELIS_TEST_CONNECTION becomes that of the page.
void connect(PageObjects& page);

/// Does what one page of a web application does, on the calling thread, whose page is `page`: creates the
/// object, calls methods by both roads, walks a recordset in every way, reads a failure, writes a tree.
/// Expectations of the test that calls it say what went wrong.
void visit(PageObjects& page);

}  // namespace pradelis::test
