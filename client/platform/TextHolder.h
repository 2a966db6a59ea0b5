#pragma once

#include <QString>
#include <QtPlugin>

namespace platform {

// What text fields and text views share: an editable text. Helpers that work on "a text field or a
// text view" take a QObject and accept exactly the objects implementing this.
class TextHolder
{
public:
    virtual ~TextHolder() = default;
    virtual QString text() const = 0;
    virtual void setText(const QString &text) = 0;
};

} // namespace platform

#define TarvelTextHolder_iid "org.tarvel.platform.TextHolder"
Q_DECLARE_INTERFACE(platform::TextHolder, TarvelTextHolder_iid)
