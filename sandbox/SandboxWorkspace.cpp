#include "sandbox/SandboxWorkspace.h"

namespace brivane {

void SandboxWorkspace::reveal(const QString& path)
{
    m_revealed << path;
}

} // namespace brivane
