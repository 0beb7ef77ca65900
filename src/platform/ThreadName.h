#pragma once

#include <QString>

namespace brivane {

/// Gives the calling thread the name that debuggers and process lists show, cut off where the
/// system wants it shorter.
void nameThisThread(const QString& name);

} // namespace brivane
