#pragma once

#include <utility>

namespace brivane {

/// Gives a published field of `object` a value and tells so by `changed`, if that is another one
/// than it has. Whether it was. Bindings run before this returns, and see the new value.
template<typename Object, typename Field, typename Value>
bool publish(Field& field, Value&& value, Object* object, void (Object::*changed)())
{
    if (field == value)
        return false;
    field = std::forward<Value>(value);
    (object->*changed)();
    return true;
}

} // namespace brivane
