#pragma once

#include <QString>
#include <QVariant>

// The text a value prints as when formatted with "%@": text as it is; numbers in shortest decimal
// form ("58", "58.5", "1e+21"); booleans "1" and "0"; null "<null>"; an invalid QVariant (nil)
// "(null)"; dictionaries and arrays in the old-style property-list form (`{\n    key = value;\n}`,
// four spaces a level, keys sorted, strings quoted unless made only of letters, digits and
// underscore, non-ASCII as \Uxxxx; arrays `(\n    a,\n    b\n)`).
// Inside a container, scalars follow the quoting rule of strings (`price = "58.5";`,
// `avatar = "<null>";`), and a nested container starts with its own indentation
// (`data =     {`), as the platform prints them.
QString objectDescription(const QVariant &value);
