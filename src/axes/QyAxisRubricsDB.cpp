// Rubrics read from a column of a data model: the link notes a change, the next layout reads.
#include "QyAxis.h"
#include "QyListLink.h"

QAbstractItemModel* TQyAxis::GetDataSource() const { return FRubricsLink->DataSource(); }

void TQyAxis::SetDataSource(QAbstractItemModel* source) {
  FRubricsLink->SetDataSource(source);
  FDBChanged = source != nullptr;
  if (source) Modified();
}

QString TQyAxis::GetRubricsField() const { return FRubricsLink->FieldName(); }

void TQyAxis::SetRubricsField(QString field) {
  FRubricsLink->SetFieldName(field);
  FDBChanged = true;
  Modified();
}

// The link's change event: nothing is read now; a rubrics axis lays out again at the next paint.
void TQyAxis::DBModified() {
  FDBChanged = true;
  if (FScaling == TQyAxisScaling::Rubrics) Modified();
}

void TQyAxis::UpdateDB() {
  if (!FDBChanged || FReadingDB) return;
  if (!FRubricsLink->DataSource() || FRubricsLink->FieldName().isEmpty()) {
    FDBChanged = false; // no usable binding: switched off until one is set
    return;
  }
  const int column = FRubricsLink->FieldColumn();
  if (column < 0) return; // the model has no such column yet: try again at the next layout
  FReadingDB = true;
  QAbstractItemModel* model = FRubricsLink->DataSource();
  const int rows = FRubricsLink->FetchAll();
  QStringList rubrics;
  rubrics.reserve(rows);
  for (int r = 0; r < rows; ++r) {
    const QVariant v = model->data(model->index(r, column));
    rubrics << (v.isNull() ? QString() : v.toString()); // a null gives an empty rubric
  }
  FRubrics = rubrics;
  FReadingDB = false;
  FDBChanged = false;
}
