#pragma once

#include "core/AppMode.h"

#include <QObject>

#include <memory>

namespace brivane {

class Composition;

/// Which module is on screen. The sidebar and the keys change it, and so may a module that leads to
/// another one. GUI thread.
class Navigation : public QObject {
    Q_OBJECT
    Q_PROPERTY(brivane::AppMode::Mode appMode READ appMode WRITE setAppMode NOTIFY appModeChanged)

public:
    using QObject::QObject;
    static std::unique_ptr<Navigation> make(Composition& composition);

    /// The dashboard at first.
    [[nodiscard]] AppMode::Mode appMode() const { return m_appMode; }
    void setAppMode(AppMode::Mode mode);

Q_SIGNALS:
    void appModeChanged();

private:
    AppMode::Mode m_appMode = AppMode::dashboard;
};

} // namespace brivane
