#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

// The pay bar under the order: the amount due and the pay button.
class ConfirmBottomView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by ConfirmOrderViewController")
    Q_PROPERTY(platform::Label *labelPrice READ labelPrice CONSTANT)
    Q_PROPERTY(platform::Button *buttonPay READ buttonPay CONSTANT)
public:
    using Block = std::function<void()>;

    explicit ConfirmBottomView(QObject *parent = nullptr);

    platform::Label *labelPrice() const { return m_labelPrice; }
    platform::Button *buttonPay() const { return m_buttonPay; }

    // The amount text as given; the block runs when the pay button is pressed.
    void setPrice(const QString &price, Block block);
    void setPrice(const QString &price);

private:
    platform::Label *m_labelPrice = nullptr;
    platform::Button *m_buttonPay = nullptr;
    Block m_myBlock;
};
