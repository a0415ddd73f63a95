#include "QyListLink.h"
#include <QDate>
#include <QDateTime>
#include <QLocale>

TQyListLink::TQyListLink(QObject* owner) : QObject(owner) {}

void TQyListLink::SetDataSource(QAbstractItemModel* model) {
  if (FDataSource == model) return;
  if (FDataSource) disconnect(FDataSource, nullptr, this, nullptr);
  FDataSource = model;
  FLastRecordCount = model ? model->rowCount() : 0;
  if (!model) return;
  auto rowsChanged = [this] { DataEvent(TQyDataEvent::DataSetChange); };
  connect(model, &QAbstractItemModel::rowsInserted, this, rowsChanged);
  connect(model, &QAbstractItemModel::rowsRemoved, this, rowsChanged);
  // A reset may bring new values under an equal row count (a table selected anew after an
  // edit): it counts as a change of the values too.
  connect(model, &QAbstractItemModel::modelReset, this, [this] {
    FLastRecordCount = FDataSource ? FDataSource->rowCount() : 0;
    DataEvent(TQyDataEvent::FieldChange);
  });
  connect(model, &QAbstractItemModel::layoutChanged, this,
          [this] { DataEvent(TQyDataEvent::FieldChange); }); // sorted: other order of values
  connect(model, &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
            DataEvent(TQyDataEvent::FieldChange, topLeft.column(), bottomRight.column());
          });
}

void TQyListLink::DataEvent(TQyDataEvent event, int firstColumn, int lastColumn) {
  if (!FDataSource) return;
  if (event == TQyDataEvent::DataSetChange) {
    const int n = FDataSource->rowCount();
    if (n == FLastRecordCount) return;
    FLastRecordCount = n;
  } else if (firstColumn >= 0) {
    const int column = FieldColumn();
    if (column >= 0 && (column < firstColumn || column > lastColumn)) return; // another field
  }
  if (OnDataChange) OnDataChange();
}

int TQyListLink::FieldColumn() const {
  if (!FDataSource || FFieldName.isEmpty()) return -1;
  for (int c = 0, n = FDataSource->columnCount(); c < n; ++c)
    if (FDataSource->headerData(c, Qt::Horizontal).toString().compare(FFieldName, Qt::CaseInsensitive) == 0)
      return c;
  return -1;
}

int TQyListLink::FetchAll() {
  if (!FDataSource) return 0;
  while (FDataSource->canFetchMore(QModelIndex())) FDataSource->fetchMore(QModelIndex());
  return FDataSource->rowCount();
}

namespace {
// Days from 1899-12-30; before that day the time of day still counts forward from the day.
double DaysOf(const QDate& date, qint64 msecOfDay) {
  static const qint64 zero = QDate(1899, 12, 30).toJulianDay();
  const double day = double(date.toJulianDay() - zero);
  const double time = double(msecOfDay) / 86'400'000.0;
  return day >= 0 ? day + time : day - time;
}
} // namespace

std::optional<double> TQyListLink::FieldAsFloat(int row, int column) const {
  const QVariant v = FDataSource->data(FDataSource->index(row, column), Qt::EditRole);
  if (v.isNull()) return std::nullopt;
  switch (v.typeId()) {
  case QMetaType::QDate: return DaysOf(v.toDate(), 0);
  case QMetaType::QDateTime: {
    const QDateTime t = v.toDateTime();
    return DaysOf(t.date(), t.time().msecsSinceStartOfDay());
  }
  case QMetaType::QString: { // numbers stored as text read with a point, whatever the locale
    bool ok = false;
    const double x = QLocale::c().toDouble(v.toString().trimmed(), &ok);
    return ok ? std::optional(x) : std::nullopt;
  }
  default: {
    bool ok = false;
    const double x = v.toDouble(&ok);
    return ok ? std::optional(x) : std::nullopt;
  }
  }
}
