#include "platform/ui/RowModel.h"

namespace platform {

RowModel::RowModel(QObject *parent)
    : QAbstractListModel(parent)
{ }

RowModel::RowModel(const QStringList &roles, QObject *parent)
    : QAbstractListModel(parent)
{
    for (const QString &role : roles) {
        if (!m_roleKeys.contains(role.toUtf8()))
            m_roleKeys.append(role.toUtf8());
    }
}

void RowModel::reloadData()
{
    if (m_provider)
        setRows(m_provider());
}

void RowModel::setRows(const QList<QVariantMap> &rows)
{
    const int before = count();
    beginResetModel();
    learnRoles(rows);
    m_rows = rows;
    endResetModel();
    if (before != count())
        emit countChanged();
}

void RowModel::appendRows(const QList<QVariantMap> &rows)
{
    if (rows.isEmpty())
        return;
    learnRoles(rows);
    beginInsertRows(QModelIndex(), count(), count() + int(rows.size()) - 1);
    m_rows.append(rows);
    endInsertRows();
    emit countChanged();
}

bool RowModel::updateRow(int index, const QVariantMap &row)
{
    if (index < 0 || index >= count())
        return false;
    learnRoles({row});
    m_rows[index] = row;
    const QModelIndex changed = this->index(index);
    emit dataChanged(changed, changed);
    return true;
}

bool RowModel::removeRow(int index)
{
    if (index < 0 || index >= count())
        return false;
    beginRemoveRows(QModelIndex(), index, index);
    m_rows.removeAt(index);
    endRemoveRows();
    emit countChanged();
    return true;
}

int RowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RowModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const QVariantMap &row = m_rows.at(index.row());
    if (role == RowRole)
        return row;
    const qsizetype key = role - RowRole - 1;
    if (key < 0 || key >= m_roleKeys.size())
        return {};
    return row.value(QString::fromUtf8(m_roleKeys.at(key)));
}

QHash<int, QByteArray> RowModel::roleNames() const
{
    QHash<int, QByteArray> names;
    names.insert(RowRole, QByteArrayLiteral("row"));
    for (qsizetype i = 0; i < m_roleKeys.size(); ++i)
        names.insert(RowRole + 1 + int(i), m_roleKeys.at(i));
    return names;
}

void RowModel::learnRoles(const QList<QVariantMap> &rows)
{
    for (const QVariantMap &row : rows) {
        for (auto it = row.cbegin(); it != row.cend(); ++it) {
            const QByteArray key = it.key().toUtf8();
            if (key != "row" && !m_roleKeys.contains(key))
                m_roleKeys.append(key);
        }
    }
}

} // namespace platform
