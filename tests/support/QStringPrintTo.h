#pragma once
// Lets GoogleTest print QString values readably in failure messages (include in a test
// file that compares QStrings).

#include <QString>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}
