#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// How failures show Qt's texts. Where GoogleTest looks for it: beside the types.

inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* stream)
{
    PrintTo(texts.join(u"\", \""), stream);
}
