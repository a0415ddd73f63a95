// The document records of the calculated curves, and their registration by class name. The
// function series' entries follow those of the line series in a further block of the stream;
// each kind of curve adds its settings in the block after that.
#include "QyClassRegistry.h"
#include "QyLinearRegression.h"
#include "QyLeastSquares.h"
#include "QyMovingAverage.h"
#include "QySimplexFit.h"
#include "QyRecordMedia.h"
#include "QyRecordSchema.h"
#include "QySpectrum.h"

QY_REGISTER_CLASS(TQyMovingAverage);
QY_REGISTER_CLASS(TQyInterpolation);
QY_REGISTER_CLASS(TQyDifferential);
QY_REGISTER_CLASS(TQyIntegral);
QY_REGISTER_CLASS(TQyFittedLine);
QY_REGISTER_CLASS(TQyLinearRegression);
QY_REGISTER_CLASS(TQyGeneralLinearLeastSquares);
QY_REGISTER_CLASS(TQyPolynomial);
QY_REGISTER_CLASS(TQyDiscreteFourier);

namespace {
using T = TQyFieldType;

TQyRecordEntry Entry(const char* key, T type, const QString& node, int block) {
  return QyField(key, type, key).At(node).InBlock(block);
}

// A byte kept free in the stream: written as 0 and read past.
TQyRecordEntry Reserved(int block) {
  return QyField("Reserved", T::Bool, [](const QObject*) { return QVariant(false); }).Only(QyMedia::Stream).InBlock(block);
}
} // namespace

QY_REGISTER_RECORD(TQyFunctionSeries, {
    Entry("Weight", T::Reference, "FunctionSeries", 4),
    Entry("AutoStart", T::Bool, "FunctionSeries", 4),
    Entry("AutoStop", T::Bool, "FunctionSeries", 4),
    Entry("DisplayAutoStart", T::Bool, "FunctionSeries", 4),
    Entry("DisplayAutoStop", T::Bool, "FunctionSeries", 4),
    Entry("CalculationStart", T::Double, "FunctionSeries", 4),
    Entry("CalculationStop", T::Double, "FunctionSeries", 4),
    Entry("DisplayStart", T::Double, "FunctionSeries", 4),
    Entry("DisplayStop", T::Double, "FunctionSeries", 4),
    Entry("CoupleCalculationAndDisplay", T::Bool, "FunctionSeries", 4),
    Entry("ClipYValues", T::Bool, "FunctionSeries", 4),
    Reserved(4),
});

QY_REGISTER_RECORD(TQyInterpolation, {
    QyField("Method", T::Enum, "InterpolationMethod").At("Interpolation").InBlock(5),
    Entry("SmoothPoints", T::Bool, "Interpolation", 5),
    Entry("SmoothingRange", T::Double, "Interpolation", 5),
    Entry("ElasticityFactor", T::Double, "Interpolation", 5),
    Reserved(5),
});

QY_REGISTER_RECORD(TQyMovingAverage, {
    Entry("AveragingMethod", T::Enum, "MovingAverage", 5),
    Entry("AveragingDirection", T::Enum, "MovingAverage", 5),
    Entry("AveragingRangeMethod", T::Enum, "MovingAverage", 5),
    Entry("N", T::Double, "MovingAverage", 5),
    Entry("ExponentialFactorForN", T::Double, "MovingAverage", 5),
});

namespace {
// The coefficients: a counted list in a stream and in XML; in INI their count as "Order" and the
// list, "None" when there is none.
void WriteCoefficients(const QObject* o, TQyRecordMedium& m) {
  const QList<double> c = static_cast<const TQyFittedLine*>(o)->GetCoefficients();
  const QVariantList items(c.begin(), c.end());
  if (m.Kind() != TQyRecordMedium::TKind::Ini) return m.WriteItems("Coefficients", T::Double, items);
  m.Write("Order", T::Int32, int(c.size()));
  if (c.isEmpty()) m.Write("Coefficients", T::String, QString("None"));
  else m.WriteItems("Coefficients", T::Double, items);
}

void ReadCoefficients(QObject* o, TQyRecordMedium& m) {
  QList<double> c;
  const bool none = m.Kind() == TQyRecordMedium::TKind::Ini && m.Read("Coefficients", T::String, {}).toString() == "None";
  if (!none)
    for (const QVariant& v : m.ReadItems("Coefficients", T::Double)) c << v.toDouble();
  static_cast<TQyFittedLine*>(o)->SetCoefficients(c);
}

// The offset: in a stream only when it is fixed; set as the document holds it, without asking.
void WriteOffset(const QObject* o, TQyRecordMedium& m) {
  const auto* r = static_cast<const TQyLinearRegression*>(o);
  if (m.Kind() != TQyRecordMedium::TKind::Stream || r->GetFixedOffset()) m.Write("Offset", T::Double, r->GetOffset());
}

void ReadOffset(QObject* o, TQyRecordMedium& m) {
  auto* r = static_cast<TQyLinearRegression*>(o);
  if (m.Kind() == TQyRecordMedium::TKind::Stream && !r->GetFixedOffset()) return;
  r->TakeOffset(m.Read("Offset", T::Double, r->GetOffset()).toDouble());
}
} // namespace

QY_REGISTER_RECORD(TQyFittedLine, {
    Entry("DoCovariance", T::Bool, "Fit", 5),
    Entry("Iterations", T::Int32, "Fit", 5),
    QyCustomField("Coefficients", WriteCoefficients, ReadCoefficients).At("Fit").InBlock(5),
    Entry("Expression", T::String, "Fit", 5),
    Reserved(5),
});

QY_REGISTER_RECORD(TQyLinearRegression, {
    Entry("FixedOffset", T::Bool, "LinearRegression", 5),
    QyCustomField("Offset", WriteOffset, ReadOffset).At("LinearRegression").InBlock(5),
    Entry("ConfidenceIntervalLine", T::Object, "LinearRegression", 5),
    Entry("ConfidenceIntervalArea", T::Object, "LinearRegression", 5),
    Reserved(5),
});

// Both fits keep their order; only the XML node tells them apart.
QY_REGISTER_RECORD(TQyGeneralLinearLeastSquares, {
    QyField("Order", T::Int32, "Order").At("GeneralLinearLeastSquares").InBlock(5),
    Reserved(5),
});

QY_REGISTER_RECORD(TQyPolynomial, {
    QyField("Order", T::Int32, "Order").At("Polynomial").InBlock(5),
    Reserved(5),
});
