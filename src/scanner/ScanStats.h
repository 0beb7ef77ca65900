#pragma once

#include "platform/Locations.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace brivane {

class Clock;
class ScanViewModel;

/// The figures of a scan as the bars and headers of its screens word them. GUI thread; belongs to
/// the view model, whose signals it follows.
class ScanStats : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model brings it")
    Q_PROPERTY(QString filesText READ filesText NOTIFY progressChanged)
    Q_PROPERTY(QString bytesText READ bytesText NOTIFY progressChanged)
    Q_PROPERTY(QString rateText READ rateText NOTIFY progressChanged)
    Q_PROPERTY(QString currentPath READ currentPath NOTIFY progressChanged)
    Q_PROPERTY(QString focusName READ focusName NOTIFY focusChanged)
    Q_PROPERTY(QString focusPath READ focusPath NOTIFY focusChanged)
    Q_PROPERTY(QString focusSizeText READ focusSizeText NOTIFY focusChanged)
    Q_PROPERTY(bool canGoUp READ canGoUp NOTIFY focusChanged)
    Q_PROPERTY(QString resultFilesText READ resultFilesText NOTIFY resultChanged)
    Q_PROPERTY(QString resultSizeText READ resultSizeText NOTIFY resultChanged)
    Q_PROPERTY(QString durationText READ durationText NOTIFY resultChanged)
    Q_PROPERTY(QString hiddenSpaceText READ hiddenSpaceText NOTIFY resultChanged)
    Q_PROPERTY(int issueCount READ issueCount NOTIFY progressChanged)

public:
    ScanStats(const ScanViewModel& viewModel, Locations locations, const Clock& clock,
              QObject* parent);

    [[nodiscard]] QString filesText() const;
    [[nodiscard]] QString bytesText() const;
    /// Entries a second since the start of the scan: "1200 f/s".
    [[nodiscard]] QString rateText() const;
    [[nodiscard]] QString currentPath() const;
    [[nodiscard]] QString focusName() const;
    [[nodiscard]] QString focusPath() const;
    [[nodiscard]] QString focusSizeText() const;
    [[nodiscard]] bool canGoUp() const;
    /// Empty, as the three that follow, while no scan has finished.
    [[nodiscard]] QString resultFilesText() const;
    [[nodiscard]] QString resultSizeText() const;
    [[nodiscard]] QString durationText() const;
    /// Also empty when there is none.
    [[nodiscard]] QString hiddenSpaceText() const;
    /// How many entries could not be read.
    [[nodiscard]] int issueCount() const;
    /// Path and reason of each, a line for each.
    Q_INVOKABLE QStringList issueLines() const;

Q_SIGNALS:
    void progressChanged();
    void focusChanged();
    void resultChanged();

private:
    /// `path` as the machine names it, its middle left out when it is long.
    [[nodiscard]] QString shown(const QString& path) const;

    const ScanViewModel& m_viewModel;
    const Locations m_locations;
    const Clock& m_clock;
};

} // namespace brivane
