#ifndef SCANNER_NAMEDROW_H
#define SCANNER_NAMEDROW_H

#include "Errors.h"

#include <QtCore/QStringList>

#include <cstddef>

namespace Scanner {

/// The row of that name in a table whose rows have a member `name`. Throws `FunctionNotExist` with
/// all the names; `what` says in the text what they are names of.
template <typename Row, std::size_t count>
const Row &rowNamed(const Row (&rows)[count], const QString &name, const QString &what)
{
    QStringList names;
    for (const Row &row : rows) {
        if (row.name == name)
            return row;
        names.append(row.name);
    }
    raise(FunctionNotExist, QStringLiteral("There is no %1 \"%2\", but %3")
                                .arg(what, name, names.join(QStringLiteral(", "))));
}

} // namespace Scanner

#endif
