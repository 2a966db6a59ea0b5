#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

namespace platform {
class Button;
class TextField;
} // namespace platform

// The form of the personal-data screen: the nickname, three mutually exclusive gender buttons and
// the save button, whose tap goes to the delegate's didClickButtonSave. Drawn by
// PersonalDataBottomView.qml.
class PersonalDataBottomView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(platform::TextField *fieldName READ fieldName CONSTANT)
    Q_PROPERTY(platform::Button *buttonMale READ buttonMale CONSTANT)
    Q_PROPERTY(platform::Button *buttonWoman READ buttonWoman CONSTANT)
    Q_PROPERTY(platform::Button *buttonNone READ buttonNone CONSTANT)
    Q_PROPERTY(platform::Button *buttonSave READ buttonSave CONSTANT)
public:
    // Gender codes as the service gives them.
    enum Sex { Male = 0, Woman = 1, NotStated = 2 };

    explicit PersonalDataBottomView(QObject *parent = nullptr);

    platform::TextField *fieldName() const { return m_fieldName; }
    platform::Button *buttonMale() const { return m_buttonMale; }
    platform::Button *buttonWoman() const { return m_buttonWoman; }
    platform::Button *buttonNone() const { return m_buttonNone; }
    platform::Button *buttonSave() const { return m_buttonSave; }

    // Any object with a didClickButtonSave method (slot or invokable).
    QObject *delegate() const { return m_delegate; }
    void setDelegate(QObject *delegate) { m_delegate = delegate; }

    // The name, and the button of `sex` selected (any other code selects none).
    void setViewContentWithName(const QString &name, int sex);
    QString getUserName() const;
    // "0" male, "1" female, "2" not stated; "0" too when nothing is selected.
    QString getUserSex() const;

    Q_INVOKABLE void clickButtonSex(platform::Button *button);
    Q_INVOKABLE void clickButtonSave();

private:
    void selectOnly(platform::Button *button);

    platform::TextField *m_fieldName;
    platform::Button *m_buttonMale;
    platform::Button *m_buttonWoman;
    platform::Button *m_buttonNone;
    platform::Button *m_buttonSave;
    QPointer<QObject> m_delegate;
};
