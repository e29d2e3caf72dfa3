#pragma once

#include <set>
#include <string>
#include <utility>

namespace nbx::test {

using KeyAddress = std::pair<std::string, std::string>;  // section, key

// Every key of the store, written out from the tables of the settings, on
// their own and not from the program's tables, so that a key the load or the
// unload forgets shows. A key marked "<" is read and never written, one
// marked ">" written and never read.
struct KeyList {
  std::set<KeyAddress> read;
  std::set<KeyAddress> written;
};

KeyList ReferenceKeys();

}  // namespace nbx::test
