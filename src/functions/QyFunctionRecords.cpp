// The document records of the calculated curves, and their registration by class name. The
// function series' entries follow those of the line series in a further block of the stream;
// each kind of curve adds its settings in the block after that.
#include "QyClassRegistry.h"
#include "QyLeastSquares.h"
#include "QyMovingAverage.h"
#include "QyRecordMedia.h"
#include "QyRecordSchema.h"
#include "QySpectrum.h"

QY_REGISTER_CLASS(TQyMovingAverage);
QY_REGISTER_CLASS(TQyInterpolation);
QY_REGISTER_CLASS(TQyDifferential);
QY_REGISTER_CLASS(TQyIntegral);
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

// Both fits keep their order; only the XML node tells them apart.
QY_REGISTER_RECORD(TQyGeneralLinearLeastSquares, {
    QyField("Order", T::Int32, "Order").At("GeneralLinearLeastSquares").InBlock(5),
    Reserved(5),
});

QY_REGISTER_RECORD(TQyPolynomial, {
    QyField("Order", T::Int32, "Order").At("Polynomial").InBlock(5),
    Reserved(5),
});
