#include "app/ModuleScreens.h"

namespace brivane {

using namespace Qt::StringLiterals;

QUrl moduleScreen(AppMode::Mode mode)
{
    switch (mode) {
    case AppMode::scanner:
        return QUrl(u"qrc:/qt/qml/Brivane/App/ScannerModule.qml"_s);
    case AppMode::quarantine:
        return QUrl(u"qrc:/qt/qml/Brivane/App/QuarantineModule.qml"_s);
    default:
        return QUrl(u"qrc:/qt/qml/Brivane/App/MissingModule.qml"_s);
    }
}

} // namespace brivane
