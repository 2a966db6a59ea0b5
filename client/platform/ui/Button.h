#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// What a button shows and does. Titles, images and title colours may differ per state; a state
// without its own value shows the normal one. Disabled wins over selected.
class Button : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ButtonState)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    Q_PROPERTY(QString selectedTitle READ selectedTitle WRITE setSelectedTitle NOTIFY changed)
    Q_PROPERTY(QString disabledTitle READ disabledTitle WRITE setDisabledTitle NOTIFY changed)
    Q_PROPERTY(QString currentTitle READ currentTitle NOTIFY changed)
    Q_PROPERTY(QString imageName READ imageName WRITE setImageName NOTIFY changed)
    Q_PROPERTY(QString selectedImageName READ selectedImageName WRITE setSelectedImageName NOTIFY
                       changed)
    Q_PROPERTY(QString currentImageName READ currentImageName NOTIFY changed)
    Q_PROPERTY(QString backgroundImageName READ backgroundImageName WRITE setBackgroundImageName
                       NOTIFY changed)
    Q_PROPERTY(QString selectedBackgroundImageName READ selectedBackgroundImageName WRITE
                       setSelectedBackgroundImageName NOTIFY changed)
    Q_PROPERTY(QString currentBackgroundImageName READ currentBackgroundImageName NOTIFY changed)
    Q_PROPERTY(QColor titleColor READ titleColor WRITE setTitleColor NOTIFY changed)
    Q_PROPERTY(QColor selectedTitleColor READ selectedTitleColor WRITE setSelectedTitleColor NOTIFY
                       changed)
    Q_PROPERTY(QColor currentTitleColor READ currentTitleColor NOTIFY changed)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected NOTIFY changed)
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY changed)
public:
    explicit Button(QObject *parent = nullptr);

    QString title() const { return m_title; }
    void setTitle(const QString &title) { assign(m_title, title); }
    QString selectedTitle() const { return m_selectedTitle; }
    void setSelectedTitle(const QString &title) { assign(m_selectedTitle, title); }
    QString disabledTitle() const { return m_disabledTitle; }
    void setDisabledTitle(const QString &title) { assign(m_disabledTitle, title); }
    QString currentTitle() const;

    QString imageName() const { return m_imageName; }
    void setImageName(const QString &name) { assign(m_imageName, name); }
    QString selectedImageName() const { return m_selectedImageName; }
    void setSelectedImageName(const QString &name) { assign(m_selectedImageName, name); }
    QString currentImageName() const;

    QString backgroundImageName() const { return m_backgroundImageName; }
    void setBackgroundImageName(const QString &name) { assign(m_backgroundImageName, name); }
    QString selectedBackgroundImageName() const { return m_selectedBackgroundImageName; }
    void setSelectedBackgroundImageName(const QString &name)
    {
        assign(m_selectedBackgroundImageName, name);
    }
    QString currentBackgroundImageName() const;

    QColor titleColor() const { return m_titleColor; }
    void setTitleColor(const QColor &color);
    QColor selectedTitleColor() const { return m_selectedTitleColor; }
    void setSelectedTitleColor(const QColor &color);
    QColor currentTitleColor() const;

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { assign(m_enabled, enabled); }
    bool isSelected() const { return m_selected; }
    void setSelected(bool selected) { assign(m_selected, selected); }
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { assign(m_hidden, hidden); }
    int tag() const { return m_tag; }
    void setTag(int tag) { assign(m_tag, tag); }

    // A user's tap: emits `clicked` only while the button is enabled and visible.
    Q_INVOKABLE bool tap();

signals:
    void changed();
    void clicked();

private:
    template<typename T>
    void assign(T &field, const T &value)
    {
        if (field == value)
            return;
        field = value;
        emit changed();
    }
    void assign(QString &field, const QString &value);
    // A state's own value when it has one, else the normal value.
    static QString pick(bool inState, const QString &stateValue, const QString &normal);

    QString m_title;
    QString m_selectedTitle;
    QString m_disabledTitle;
    QString m_imageName;
    QString m_selectedImageName;
    QString m_backgroundImageName;
    QString m_selectedBackgroundImageName;
    QColor m_titleColor = QColor(0, 122, 255); // the platform's tint until a screen sets one
    QColor m_selectedTitleColor; // invalid: as in the normal state
    bool m_enabled = true;
    bool m_selected = false;
    bool m_hidden = false;
    int m_tag = 0;
};

} // namespace platform
