#pragma once

#include "platform/FileIdentity.h"

#include <QObject>
#include <QString>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace brivane {

/// One file or folder that a scanner found. A plain value.
struct CleanerItem {
    Q_GADGET
    QML_VALUE_TYPE(cleanerItem)
    Q_PROPERTY(QUuid id MEMBER id CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString path MEMBER path CONSTANT)

public:
    QUuid id = QUuid::createUuid(); ///< fresh for each scan
    QString name;                   ///< as the list names it
    QString path;                   ///< absolute
    quint64 size = 0;               ///< logical bytes
    bool isDirectory = false;
    QString iconName; ///< of the symbol, as the scanner chose it
    std::optional<QString> appBundleIdentifier = {};
    bool isSelected = false;
    /// What stood at the path when it was found: nothing else may be removed in its name.
    FileIdentity identity = {};
};

} // namespace brivane
