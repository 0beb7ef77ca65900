#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace brivane {

/// Which modules are busy with long work, as tokens that their services insert and remove. Main
/// thread only.
class ActivityTracker : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The tokens in ascending order, for bindings.
    Q_PROPERTY(QStringList activeProcesses READ activeProcessList NOTIFY activeProcessesChanged)

public:
    // The tokens.
    static inline const QString smartClean = QStringLiteral("Smart Clean");
    static inline const QString duplicates = QStringLiteral("Duplicates");
    static inline const QString similarPhotos = QStringLiteral("Similar Photos");

    explicit ActivityTracker(QObject* parent = nullptr)
        : QObject(parent)
    {
    }

    /// The tracker of the program, made on first use, never destroyed.
    static ActivityTracker& shared();
    /// Gives QML the shared one.
    static ActivityTracker* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    [[nodiscard]] const QSet<QString>& activeProcesses() const { return m_activeProcesses; }
    [[nodiscard]] QStringList activeProcessList() const;

    Q_INVOKABLE void setActive(const QString& token);
    Q_INVOKABLE void setInactive(const QString& token);
    Q_INVOKABLE [[nodiscard]] bool isActive(const QString& token) const;

Q_SIGNALS:
    void activeProcessesChanged();

private:
    QSet<QString> m_activeProcesses;
};

} // namespace brivane
