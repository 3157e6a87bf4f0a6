#pragma once

#include <string>
#include <utility>
#include <vector>

#include "com/platform.h"

namespace pradelis::test {

/// How a script ended.
struct ScriptOutcome {
  HRESULT code = S_OK;
  std::wstring failure;  ///< line, number, source and description of the error that ended it
};

/// Runs a VBScript text to its end, under Brazilian settings, with objects under the given names.
ScriptOutcome run_script(const std::wstring& script,
                         const std::vector<std::pair<std::wstring, IDispatch*>>& objects);

}  // namespace pradelis::test
