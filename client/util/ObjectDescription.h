#pragma once

#include <QString>
#include <QVariant>

// The text a value prints as when formatted with "%@": text as it is; numbers in shortest decimal
// form ("58", "58.5"); null "<null>"; an invalid QVariant (nil) "(null)"; dictionaries and arrays
// in the old-style property-list form (`{\n    key = value;\n}`, four spaces a level, keys sorted,
// strings quoted unless made only of letters, digits and underscore, non-ASCII as \Uxxxx;
// arrays `(\n    a,\n    b\n)`).
QString objectDescription(const QVariant &value);
