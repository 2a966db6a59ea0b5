#include "screens/account/PersonalDataBottomView.h"

#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"

#include <QColor>

namespace {

const char *const SaveSelector = "didClickButtonSave()";

const QColor SexTitleColor(0x88, 0x88, 0x88);
const QColor SexSelectedTitleColor(249, 145, 45);

void makeSexButton(platform::Button *button, const QString &title, int tag)
{
    button->setTitle(title);
    button->setTag(tag);
    button->setTitleColor(SexTitleColor);
    button->setSelectedTitleColor(SexSelectedTitleColor);
}

} // namespace

PersonalDataBottomView::PersonalDataBottomView(QObject *parent)
    : QObject(parent)
    , m_fieldName(new platform::TextField(this))
    , m_buttonMale(new platform::Button(this))
    , m_buttonWoman(new platform::Button(this))
    , m_buttonNone(new platform::Button(this))
    , m_buttonSave(new platform::Button(this))
{
    m_fieldName->setPlaceholder(QStringLiteral("请输入昵称"));
    m_fieldName->setClearButtonShown(true);
    makeSexButton(m_buttonMale, QStringLiteral("男"), Male);
    makeSexButton(m_buttonWoman, QStringLiteral("女"), Woman);
    makeSexButton(m_buttonNone, QStringLiteral("保密"), NotStated);
    m_buttonSave->setTitle(QStringLiteral("保存"));
    m_buttonSave->setTitleColor(Qt::white);
    for (platform::Button *button : {m_buttonMale, m_buttonWoman, m_buttonNone})
        connect(button, &platform::Button::clicked, this,
                [this, button] { clickButtonSex(button); });
    connect(m_buttonSave, &platform::Button::clicked, this,
            &PersonalDataBottomView::clickButtonSave);
}

void PersonalDataBottomView::setViewContentWithName(const QString &name, int sex)
{
    m_fieldName->setText(name);
    switch (sex) {
    case Male:
        return selectOnly(m_buttonMale);
    case Woman:
        return selectOnly(m_buttonWoman);
    case NotStated:
        return selectOnly(m_buttonNone);
    default:
        return selectOnly(nullptr);
    }
}

QString PersonalDataBottomView::getUserName() const
{
    return m_fieldName->text();
}

QString PersonalDataBottomView::getUserSex() const
{
    if (m_buttonWoman->isSelected())
        return QStringLiteral("1");
    if (m_buttonNone->isSelected())
        return QStringLiteral("2");
    // Male, and also no choice at all.
    return QStringLiteral("0");
}

void PersonalDataBottomView::clickButtonSex(platform::Button *button)
{
    selectOnly(button);
}

void PersonalDataBottomView::selectOnly(platform::Button *button)
{
    for (platform::Button *each : {m_buttonMale, m_buttonWoman, m_buttonNone})
        each->setSelected(each == button);
}

void PersonalDataBottomView::clickButtonSave()
{
    if (!m_delegate)
        return;
    const QMetaObject *meta = m_delegate->metaObject();
    if (meta->indexOfMethod(SaveSelector) < 0)
        return;
    QMetaObject::invokeMethod(m_delegate, "didClickButtonSave");
}
