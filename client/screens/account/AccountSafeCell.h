#pragma once

#include <QColor>
#include <QObject>
#include <QString>

#include <functional>

namespace platform {
class Button;
class Label;
} // namespace platform

// One row of the security list: a title, a tip under it and a button on the right that runs the
// row's action. AccountSafeCell.qml draws it.
class AccountSafeCell : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(platform::Label *labelTip READ labelTip CONSTANT)
    Q_PROPERTY(platform::Button *buttonModify READ buttonModify CONSTANT)
    Q_PROPERTY(QColor buttonBackgroundColor READ buttonBackgroundColor NOTIFY changed)
public:
    enum ButtonType { Modify = 0, Bind = 1 };
    Q_ENUM(ButtonType)
    using Block = std::function<void()>;

    explicit AccountSafeCell(QObject *parent = nullptr);

    void setCellContentWithTitle(const QString &title, const QString &tip, Block block);
    // 0: "修改" on a light button; 1: "绑定" on an orange one.
    void setButtonType(int type);

    QString title() const { return m_title; }
    platform::Label *labelTip() const { return m_labelTip; }
    platform::Button *buttonModify() const { return m_buttonModify; }
    QColor buttonBackgroundColor() const { return m_buttonBackgroundColor; }
    int buttonType() const { return m_buttonType; }

signals:
    void changed();

private:
    QString m_title;
    platform::Label *m_labelTip;
    platform::Button *m_buttonModify;
    QColor m_buttonBackgroundColor;
    int m_buttonType = Modify;
    Block m_block;
};
