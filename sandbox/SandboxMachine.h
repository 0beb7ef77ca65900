#pragma once

#include "platform/Locations.h"
#include "sandbox/SandboxCommand.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringView>

#include <optional>

#include <sys/types.h>

namespace brivane {

/// A make-believe Mac in a folder: "~" is its `home`, "/" its `root`. Tests and the demo put the
/// files there that they want, and real commands that answer as they are told.
///
/// Paths are catalogue paths and go through locations(). Folders on the way are made. Functions
/// that make something give back where it lies, and throw std::system_error when it cannot be made.
/// Different threads may use one machine at a time as long as they make different things.
class SandboxMachine {
public:
    /// A number of bytes, where a QByteArray would be the bytes themselves.
    struct Size {
        qint64 bytes;
    };

    /// The machine in `folder`, which is made when it is missing and stays in the end.
    explicit SandboxMachine(const QString& folder);

    /// A machine in a folder of its own for temporary files. It is removed in the end, links in it
    /// are not followed.
    static SandboxMachine temporary();

    SandboxMachine(SandboxMachine&& other) noexcept;
    SandboxMachine& operator=(SandboxMachine&&) = delete;
    ~SandboxMachine();

    [[nodiscard]] QString folder() const;
    [[nodiscard]] const Locations& locations() const { return m_locations; }
    [[nodiscard]] QString path(QStringView cataloguePath) const;

    /// A file of this length that takes no room on the disk; what it holds reads as zeros. One that
    /// is there gets the length.
    QString file(QStringView cataloguePath, Size size) const;
    /// A file with this content, in place of one that is there.
    QString file(QStringView cataloguePath, const QByteArray& content) const;
    QString directory(QStringView cataloguePath) const;
    /// A symbolic link with exactly this text in it. It is no catalogue path and need not lead
    /// anywhere.
    QString link(QStringView cataloguePath, const QByteArray& text) const;

    /// Of the thing itself, where it is a link.
    void setTimes(QStringView cataloguePath, const QDateTime& modified,
                  const QDateTime& accessed) const;
    void setMode(QStringView cataloguePath, mode_t mode) const;

    /// A recording command at this place, made on the first call.
    SandboxCommand command(QStringView cataloguePath) const;

    /// A folder on another device than the machine's, the same on each call; removed with the
    /// machine, also with one that stays. None where there is no other device that can be written.
    [[nodiscard]] std::optional<QString> secondDevice();

private:
    enum class Ending { Stays, IsRemoved };
    SandboxMachine(QByteArray folder, Ending ending);

    QByteArray m_folder; ///< empty after a move
    Ending m_ending;
    Locations m_locations;
    QByteArray m_secondDevice; ///< empty: not asked for yet
};

} // namespace brivane
