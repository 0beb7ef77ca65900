#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace brivane {

/// One item in quarantine, and one record of its manifest. A plain value.
struct QuarantineItem {
    Q_GADGET
    QML_VALUE_TYPE(quarantineItem)
    Q_PROPERTY(QUuid id MEMBER id CONSTANT)
    Q_PROPERTY(QString originalPath MEMBER originalPath CONSTANT)
    Q_PROPERTY(quint64 size MEMBER size CONSTANT)
    Q_PROPERTY(QDateTime quarantineDate MEMBER quarantineDate CONSTANT)
    Q_PROPERTY(QString categoryName MEMBER categoryName CONSTANT)
    Q_PROPERTY(QString fileName MEMBER fileName CONSTANT)

public:
    /// The category of what lay in the store and was in no list.
    inline static const QString recovered = QStringLiteral("Recovered");

    QUuid id;
    QString originalPath;     ///< where it came from and goes back to
    QString quarantinePath;   ///< where it lies now, directly in the quarantine
    quint64 size = 0;         ///< bytes, as measured before the move
    QDateTime quarantineDate; ///< when it was moved
    QString categoryName;     ///< who handed it over, in words
    QString fileName;         ///< last component of originalPath
    qint64 purgeDays = 7;     ///< how long it is kept, as its row shows it

    bool operator==(const QuarantineItem&) const = default;

    /// Days until it is removed for good, 0 when that is due.
    [[nodiscard]] qint64 daysRemaining(const QDateTime& now) const;

    [[nodiscard]] QJsonObject toJson() const;
    /// None unless all eight keys are there and hold what they should.
    [[nodiscard]] static std::optional<QuarantineItem> fromJson(const QJsonValue& value);
};

} // namespace brivane
