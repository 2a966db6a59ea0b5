#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// One item of a navigation bar: an image, a title or both. Controllers connect `triggered`.
class BarButtonItem : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Bar items belong to their view controller")
    Q_PROPERTY(QString imageName READ imageName WRITE setImageName NOTIFY changed)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    Q_PROPERTY(QColor titleColor READ titleColor WRITE setTitleColor NOTIFY changed)
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY changed)
public:
    explicit BarButtonItem(QObject *parent = nullptr);

    QString imageName() const { return m_imageName; }
    void setImageName(const QString &name);
    QString title() const { return m_title; }
    void setTitle(const QString &title);
    QColor titleColor() const { return m_titleColor; }
    void setTitleColor(const QColor &color);
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);
    // Nothing to draw: no image and no title.
    bool isEmpty() const { return m_imageName.isEmpty() && m_title.isEmpty(); }

    // Sets image and title together and shows the item.
    void configure(const QString &imageName, const QString &title);
    // What a tap does: emits `triggered` unless the item is hidden or empty.
    Q_INVOKABLE bool tap();

signals:
    void changed();
    void triggered();

private:
    QString m_imageName;
    QString m_title;
    QColor m_titleColor = QColor(Qt::white);
    bool m_hidden = false;
};

} // namespace platform
