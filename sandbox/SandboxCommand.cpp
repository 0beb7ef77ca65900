#include "sandbox/SandboxCommand.h"

#include "platform/LocationAliases.h"
#include "platform/PathText.h"
#include "sandbox/ClearFolder.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include <unistd.h>

namespace brivane {

namespace {

namespace fs = std::filesystem;

fs::path filePath(const QByteArray& bytes)
{
    return bytes.toStdString();
}

/// Arguments in the form in which calls are recorded: each with a NUL behind it.
std::string joined(const QStringList& arguments)
{
    std::string text;
    for (const QString& argument : arguments)
        text.append(PathText::toBytes(argument).toStdString()).push_back('\0');
    return text;
}

QStringList separated(const QByteArray& record)
{
    QStringList arguments;
    for (qsizetype from = 0; from < record.size();) {
        const qsizetype end = record.indexOf('\0', from);
        arguments += PathText::fromBytes(QByteArrayView(record).sliced(from, end - from));
        from = end + 1;
    }
    return arguments;
}

void write(const fs::path& file, const std::string& bytes)
{
    std::ofstream stream(file, std::ios::binary);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.flush();
}

} // namespace

SandboxCommand::SandboxCommand(QByteArray place, QByteArray folder)
    : m_place(std::move(place))
    , m_folder(std::move(folder))
{
    fs::create_directories(filePath(m_folder + "/calls"));
    fs::create_directories(filePath(m_folder + "/rules"));
    fs::create_directories(filePath(m_place).parent_path());
    // A link, not a copy: a program that was just written cannot be run while some other thread's
    // child still holds it open for writing.
    const QByteArray program = PathText::toBytes(libexecDirectory()) + "/sandbox-command";
    if (!fs::exists(filePath(program)))
        throw std::system_error(ENOENT, std::generic_category(), program.toStdString());
    if (::symlink(program.constData(), m_place.constData()) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), m_place.toStdString());
}

QString SandboxCommand::path() const
{
    return PathText::fromBytes(m_place);
}

SandboxCommand& SandboxCommand::answer(const CommandAnswer& answer)
{
    static std::atomic<unsigned> number = 0;
    const QByteArray name = QByteArray::number(++number).rightJustified(10, '0');
    const fs::path unfinished = filePath(m_folder + "/rules/." + name);
    fs::create_directory(unfinished);
    write(unfinished / "when", joined(answer.when));
    write(unfinished / "output", answer.output.toStdString());
    write(unfinished / "error", answer.error.toStdString());
    write(unfinished / "settings", std::to_string(answer.status) + ' ' +
                                       std::to_string(answer.delay.count()) + ' ' +
                                       std::to_string(answer.linger.count()));
    if (answer.uses > 0) {
        fs::create_directory(unfinished / "uses");
        for (int use = 0; use < answer.uses; ++use)
            write(unfinished / "uses" / std::to_string(use), {});
    }
    fs::rename(unfinished, filePath(m_folder + "/rules/" + name));
    return *this;
}

void SandboxCommand::forgetAnswers()
{
    const QByteArray rules = m_folder + "/rules";
    clearFolder(rules);
    fs::create_directory(filePath(rules));
}

QList<QStringList> SandboxCommand::calls() const
{
    std::vector<fs::path> records;
    for (const fs::directory_entry& entry : fs::directory_iterator(filePath(m_folder + "/calls"))) {
        if (entry.path().filename().native().front() != '.')
            records.push_back(entry.path());
    }
    std::sort(records.begin(), records.end());
    QList<QStringList> calls;
    for (const fs::path& record : records) {
        std::ifstream stream(record, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        calls += separated(QByteArray::fromStdString(bytes));
    }
    return calls;
}

} // namespace brivane
