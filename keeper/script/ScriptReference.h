#pragma once

#include <memory>

#include "keeper/script/ScriptExpression.h"

class EvalFilter;

/// A way to a value that has not been walked yet: a property, elements or a place of a container, which may
/// be a reference itself. Immutable; lives no longer than the run that made it.
struct ScriptReference {
  enum class Kind { Property, Element, Insertion };
  using Selector = scriptTree::Element::Selector;

  Kind kind = Kind::Property;
  /// The property's term, or the elements' class.
  QString term;
  Selector selector = Selector::Every;
  qint64 ordinal = 0;
  ScriptValue key;
  ScriptValue upTo;
  std::shared_ptr<const EvalFilter> filter;
  scriptTree::Insertion::Place place = scriptTree::Insertion::Place::End;
  ScriptValue container;
  /// How many references stand behind one another.
  int depth = 1;

  bool isSet() const {
    return kind == Kind::Element && (selector == Selector::Every || selector == Selector::Range);
  }
};

using ScriptReferencePtr = std::shared_ptr<const ScriptReference>;
