#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

// The bar under the cart: select all, the total of the ticked lines and the submit button.
class ShoppingCartBottomView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by TabThreeViewController")
    Q_PROPERTY(platform::Button *buttonSelectAll READ buttonSelectAll CONSTANT)
    Q_PROPERTY(platform::Label *labelPrice READ labelPrice CONSTANT)
    Q_PROPERTY(platform::Button *buttonClearing READ buttonClearing CONSTANT)
public:
    using SelectBlock = std::function<void(bool selected)>;
    using ClearingBlock = std::function<void()>;

    explicit ShoppingCartBottomView(QObject *parent = nullptr);

    platform::Button *buttonSelectAll() const { return m_buttonSelectAll; }
    platform::Label *labelPrice() const { return m_labelPrice; }
    platform::Button *buttonClearing() const { return m_buttonClearing; }

    void setClickSelectBt(SelectBlock block) { m_clickSelectBt = std::move(block); }
    void setClickClearingBt(ClearingBlock block) { m_clickClearingBt = std::move(block); }

    // Shows `allPrice` through "¥%@".
    void setViewContentWithAllPrice(const QString &allPrice);
    // Sets the select-all tick without telling anyone.
    void setSelectButton(bool selected);

private:
    platform::Button *m_buttonSelectAll = nullptr;
    platform::Label *m_labelPrice = nullptr;
    platform::Button *m_buttonClearing = nullptr;
    SelectBlock m_clickSelectBt;
    ClearingBlock m_clickClearingBt;
};
