#pragma once
// The link of a data vector (or an axis' rubrics) to one column of an item model, for example a
// query or table over a database. It follows the model's signals and says when the bound data may
// have changed; it reads nothing by itself: the owner reads at its next paint.
#include <QAbstractItemModel>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>

class TQyListLink : public QObject {
  Q_OBJECT
public:
  // What happened in the model: the row set (reset, rows inserted or removed) or values.
  enum class TQyDataEvent { DataSetChange, FieldChange };

  explicit TQyListLink(QObject* owner = nullptr);

  QAbstractItemModel* DataSource() const { return FDataSource; }
  void SetDataSource(QAbstractItemModel* model);
  // The column is named by its horizontal header (the field name of a query), case-insensitively.
  const QString& FieldName() const { return FFieldName; }
  void SetFieldName(const QString& name) { FFieldName = name; }
  int LastRecordCount() const { return FLastRecordCount; }

  // Fired when the bound data may have changed: row count changed, model reset, or values of
  // the bound column changed. Moving a view over the model costs nothing.
  std::function<void()> OnDataChange;
  void DataEvent(TQyDataEvent event, int firstColumn = -1, int lastColumn = -1);

  // ---- reading, for the owner
  // The bound column, -1 while the model has no column of that name (yet).
  int FieldColumn() const;
  // Fetches the rest of a model that delivers rows in batches; returns the row count.
  int FetchAll();
  // The field as a number, nothing for a null or a text that is no number. Dates and times count
  // in days from 1899-12-30, like every date of the library.
  std::optional<double> FieldAsFloat(int row, int column) const;

private:
  QPointer<QAbstractItemModel> FDataSource;
  QString FFieldName;
  int FLastRecordCount = 0;
};
