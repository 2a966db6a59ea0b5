#pragma once

#include "platform/ui/Button.h"

#include <QImage>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

// The button that shows the service's captcha picture as its background. refreshData() asks the
// service for a new picture; a failed load keeps the picture shown before (or none), and a tap on
// the button is how the user tries again.
class ImageCodeButton : public platform::Button
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the screens that ask for a captcha")
    Q_PROPERTY(QUrl backgroundImageUrl READ backgroundImageUrl NOTIFY backgroundImageChanged)
public:
    explicit ImageCodeButton(QObject *parent = nullptr);

    // The picture, as an address QML loads; empty until the first picture arrives.
    QUrl backgroundImageUrl() const { return m_backgroundImageUrl; }
    QImage backgroundImage() const { return m_backgroundImage; }
    void setBackgroundImage(const QImage &image);

    // Loads a new picture behind the progress HUD "正在加载".
    void refreshData();

signals:
    void backgroundImageChanged();

private:
    QImage m_backgroundImage;
    QUrl m_backgroundImageUrl;
};
