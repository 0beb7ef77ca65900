#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>

namespace brivane {

class Composition;

/// Which modules are busy with long work, as tokens that their services insert and remove. Main
/// thread only.
class ActivityTracker : public QObject {
    Q_OBJECT
    /// The tokens in ascending order, for bindings.
    Q_PROPERTY(QStringList activeProcesses READ activeProcessList NOTIFY activeProcessesChanged)

public:
    // The tokens.
    static inline const QString scanner = QStringLiteral("Scanner");
    static inline const QString smartClean = QStringLiteral("Smart Clean");
    static inline const QString duplicates = QStringLiteral("Duplicates");
    static inline const QString similarPhotos = QStringLiteral("Similar Photos");

    explicit ActivityTracker(QObject* parent = nullptr)
        : QObject(parent)
    {
    }

    static std::unique_ptr<ActivityTracker> make(Composition& composition);

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
