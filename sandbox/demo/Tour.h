#pragma once

#include <QCoroTask>
#include <QString>

#include <functional>

class QQuickWindow;

namespace brivane {

class BrivaneApp;
class DemoMachine;
class HoldableClock;
class ShellViewModel;

/// Goes through the real program on the demo machine, from the first start on, and keeps a picture
/// of each state that a screen can be in. GUI thread.
class Tour {
public:
    /// Writes into the folder `pictures`, which has to be there; names end in `suffix`.
    Tour(DemoMachine& machine, HoldableClock& clock, QString pictures, QString suffix);

    /// Ends after the last picture. False when a state was not reached or a picture not written;
    /// which, is on standard error.
    QCoro::Task<bool> run();

private:
    /// The window around the modules, while a finished scan is there.
    QCoro::Task<> showShell(ShellViewModel& shell);
    void takePicture(const QString& name);
    /// Comes back when `isReached`, or after some seconds: then the tour has failed.
    QCoro::Task<> waitFor(QString state, std::function<bool()> isReached);

    DemoMachine& m_machine;
    HoldableClock& m_clock;
    const QString m_pictures;
    const QString m_suffix;
    QQuickWindow* m_window = nullptr;
    bool m_isWell = true;
};

} // namespace brivane
