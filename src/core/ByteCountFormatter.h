#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The text of the size of what is stored, in powers of 1000 as Finder counts: for the quarantine
/// and for results. Has no state; any thread.
class ByteCountFormatter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// `bytes` in the largest unit that is not above it: "Zero KB", "1 byte", "999 bytes", "12 KB",
    /// "1.2 MB", "1.24 GB". Bytes and KB have no decimals, MB have up to one, larger units up to
    /// two; zeros at the end go. Halves are rounded up, and what rounds up to 1000 is one of the
    /// next unit: 999500 is "1 MB".
    Q_INVOKABLE static QString string(quint64 bytes);
};

} // namespace brivane
