#pragma once

#include "app/Q9FatherViewController.h"

#include <QVariantList>
#include <QVariantMap>

namespace platform {
class RowModel;
}

// The messages tab: the push messages kept in GTMessage.plist, in the order they arrived. A
// message with an address follows it; one without opens its detail screen.
class MyMessageViewController : public Q9FatherViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::RowModel *tableMain READ tableMain CONSTANT)
public:
    static const QString messagesFileName; // "GTMessage.plist"

    explicit MyMessageViewController(QObject *parent = nullptr);

    platform::RowModel *tableMain() const { return m_tableMain; }
    QVariantList arraySource() const { return m_arraySource; }

    // The list's row for one stored message: its title and its date without the year.
    static QVariantMap rowForMessage(const QVariant &message);

    // A tap on row `row`.
    Q_INVOKABLE void didSelectRowAtIndex(int row);

public slots:
    // Reads the stored messages again; the push handling calls it when a message arrives.
    void refreshData();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;

private:
    platform::RowModel *m_tableMain;
    QVariantList m_arraySource;
};
