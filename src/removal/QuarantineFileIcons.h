#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// Which symbol stands for a file in quarantine, by the extension of its name. Has no state; any
/// thread.
class QuarantineFileIcons : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    [[nodiscard]] Q_INVOKABLE static QString symbol(const QString& fileName);
    [[nodiscard]] Q_INVOKABLE static QColor color(const QString& fileName);
};

} // namespace brivane
