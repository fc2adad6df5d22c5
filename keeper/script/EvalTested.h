#pragma once

#include "keeper/script/ScriptExpression.h"

/// What in the test of a `whose` belongs to the tested thing.
namespace evalTested {

/// True for `it` itself.
bool isIt(const scriptTree::Expression &expression);
/// True if the value of an expression can differ from one `it` to the next. What is hard to say counts as
/// such.
bool dependsOnIt(const scriptTree::Expression &expression);

}  // namespace evalTested
