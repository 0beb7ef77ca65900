#pragma once

#include "Journey.h"

namespace brivane::testing {

/// A folder of 100,000 files of different sizes, open in the folder list while the walk that fills
/// it is held before its middle.
class LargeFolderJourney : public Journey {
protected:
    void SetUp() override;

    QQuickItem& list() { return *app().item(QStringLiteral("folderList")); }
    int rowCount() { return list().property("count").toInt(); }
    /// How far the list is scrolled.
    double place() { return list().property("contentY").toDouble(); }
    QString currentRow();

    /// Some reports come, and the list changes.
    [[nodiscard]] bool changes();
    /// Turns the wheel, away from the start.
    void wheel(int notches);
    void press(Qt::Key key);

private:
    void settle();

    quint64 m_wheelTime = 1'000'000;
};

} // namespace brivane::testing
