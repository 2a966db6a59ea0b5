#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// The pull-down-to-refresh header of a list or grid. The QML header reports how far the list is
// pulled past its top and when the finger lets go; pulled far enough, letting go starts a refresh.
// A refresh can also start from code (beginRefreshing); either way `refreshRequested` asks the
// controller to load, and the controller ends it with endRefreshing().
class RefreshHeader : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(RefreshHeaderState)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString text READ text NOTIFY stateChanged)
    Q_PROPERTY(bool refreshing READ isRefreshing NOTIFY stateChanged)
    Q_PROPERTY(qreal threshold READ threshold WRITE setThreshold NOTIFY thresholdChanged)
public:
    enum State { Idle, Pulling, ReadyToRefresh, Refreshing };
    Q_ENUM(State)

    static constexpr qreal DefaultThreshold = 54;

    explicit RefreshHeader(QObject *parent = nullptr);

    State state() const { return m_state; }
    QString text() const;
    bool isRefreshing() const { return m_state == Refreshing; }
    qreal threshold() const { return m_threshold; }
    void setThreshold(qreal threshold);

    // The list is pulled `distance` pixels past its top (0 or less: not pulled).
    Q_INVOKABLE void pull(qreal distance);
    // The finger let go.
    Q_INVOKABLE void release();
    Q_INVOKABLE void beginRefreshing();
    Q_INVOKABLE void endRefreshing();

signals:
    void stateChanged();
    void thresholdChanged();
    void refreshRequested();

private:
    void setState(State state);

    State m_state = Idle;
    qreal m_threshold = DefaultThreshold;
};

} // namespace platform
