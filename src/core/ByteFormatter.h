#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The text of every size on screen. Has no state; any thread.
class ByteFormatter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// `bytes` in the largest unit that is not above it, in powers of 1024 and with three digits:
    /// "0 B", "1.50 KB", "15.0 KB", "150 KB".
    Q_INVOKABLE static QString format(quint64 bytes);
};

} // namespace brivane
