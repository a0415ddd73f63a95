#include "QySimplexFit.h"
#include "QyExceptions.h"
#include "QyParseFkt.h"
#include "QyVectors.h"
#include <cmath>

TQySimplexFit::TQySimplexFit() { FCalcChi = ParsedFunction(); }

TQyFittingFunctionHandler TQySimplexFit::ParsedFunction() {
  return [this](QObject*, const TQyFittingFunctionArgs& a) {
    if (!FFunctionParser) throw EMathError(QyText(QyRes::FitNoFunction)); // no expression yet
    FX = a.X;
    return FFunctionParser->Result();
  };
}

TQySimplexFit::~TQySimplexFit() = default;

void TQySimplexFit::SetOrder(int order) {
  FOrder = std::max(order, 0);
  FCoefs.resize(FOrder, 0.5);
  FCurrentCorner = FCoefs.data();
}

void TQySimplexFit::SetCoefficients(const TDoubleDynArray& coefs) {
  if (int(coefs.size()) != FOrder) SetOrder(int(coefs.size()));
  FCoefs = coefs;
  FCurrentCorner = FCoefs.data();
}

// ---- the function: a parsed expression or the application's handler

void TQySimplexFit::PrepareParser() {
  if (FFunctionParser) return;
  FFunctionParser = std::make_unique<TQyFunctionParser>();
  auto add = [this](const QString& name, const QString& help, TQyDoubleGetter get) {
    TQyDoubleGetterRec r;
    r.Name = name, r.Help = help, r.Getter = std::move(get);
    FFunctionParser->VariablesList.append(r);
  };
  add("X", QyText(QyRes::FitVarX), [this] { return FX; });
  for (int k = 0; k < 16; ++k) {
    const QChar letter('A' + k);
    add(letter, QyText(QyRes::FitVarLetter) + letter.toLower(), [this, k] {
      return k < FOrder ? FCurrentCorner[k] : 0.0; // a letter above the order is idle
    });
  }
}

// A letter counts where it stands alone between operators, brackets or the ends of the text:
// in "Sin(A*X)" A and X count, the S of "Sin" does not.
static bool StandsAlone(const QString& text, QChar c) {
  static const QString before = "+-*/^(", after = "+-*/^)";
  for (int i = 0; i < text.size(); ++i) {
    if (text[i] != c) continue;
    if ((i == 0 || before.contains(text[i - 1])) && (i + 1 == text.size() || after.contains(text[i + 1])))
      return true;
  }
  return false;
}

void TQySimplexFit::CheckExpression() {
  QString text = FExpression.toUpper();
  text.remove(' '); // the parser reads the text without blanks
  if (!StandsAlone(text, 'X')) throw EMathError(QyText(QyRes::FitNeedsX));
  int n = -1;
  for (int k = 15; k >= 0 && n < 0; --k)
    if (StandsAlone(text, QChar('A' + k))) n = k;
  if (n < 0 && FOrder > 0) throw EMathError(QyText(QyRes::FitNeedsVariable));
  SetOrder(n + 1);
  FFunctionParser->SetExpression(FExpression);
}

void TQySimplexFit::CheckExpression(const QString& text) const {
  if (!FromExpression() || text.isEmpty()) return;
  TQySimplexFit trial;
  trial.SetOrder(FOrder);
  trial.FOrder = FOrder; // -1 stays -1
  trial.SetExpression(text);
}

void TQySimplexFit::SetExpression(const QString& text) {
  FExpression = text;
  if (FromExpression() && !text.isEmpty()) {
    PrepareParser();
    CheckExpression();
  }
}

void TQySimplexFit::SetFittingFunction(TQyFittingFunctionHandler handler) {
  FFittingFkt = std::move(handler);
  if (FFittingFkt) {
    FCalcChi = FFittingFkt;
    return;
  }
  FCalcChi = ParsedFunction();
  SetExpression(FExpression);
}

double TQySimplexFit::GetY(double atX) {
  FCurrentCorner = FCoefs.data();
  return F(atX);
}

// ---- the error of a corner

double TQySimplexFit::Residual(int idx) {
  const double d = Yi(idx) - F(Xi(idx));
  return d * d * Wi(idx);
}

double TQySimplexFit::CovarianceResidual(int idx) {
  const double x = Xi(idx), y = F(x);
  size_t k = 0;
  while (k + 1 < FRangeIdx.size() && FRangeIdx[k] < idx) ++k;
  const double inverse = FSplines[k]->Interpolate(y);
  return std::fabs((x - inverse) * (Yi(idx) - y)) * Wi(idx);
}

double TQySimplexFit::Error(const double* corner) {
  FCurrentCorner = corner;
  if (OnNewCorner) OnNewCorner(Sender, std::span<const double>(corner, FOrder));
  double sum = 0;
  // The plain measure counts every index, in range or not, outlier or not.
  for (int i = 0; i < FCount; ++i) {
    if (!DoCovariance) sum += Residual(i);
    else if (IsValid(i)) sum += CovarianceResidual(i);
  }
  // A NaN would compare false everywhere and leave the simplex to wander: name it at once.
  if (std::isnan(sum)) throw EInvalidOp(QyText(QyRes::InvalidFloatOperation));
  return sum;
}

// ---- the area form: inverse interpolations

// Points sorted by X; neighbours of equal X merge to their mean Y, then neighbours of equal Y to
// their mean X.
static void MergeNeighbours(TDoubleDynArray& key, TDoubleDynArray& other) {
  size_t out = 0;
  for (size_t i = 0; i < key.size();) {
    size_t j = i;
    double sum = 0, sumKey = 0;
    for (; j < key.size() && key[j] == key[i]; ++j) sum += other[j], sumKey += key[j];
    key[out] = sumKey / double(j - i), other[out++] = sum / double(j - i);
    i = j;
  }
  key.resize(out), other.resize(out);
}

void TQySimplexFit::SetupCovar() {
  TDoubleDynArray x, y, w;
  CollectValid(x, y, w);
  if (x.size() < 3) throw EMathError(QyText(QyRes::FitCovarianceTooFew));
  QuickSortYtoX(0, int(x.size()) - 1, x.data(), y.data());
  MergeNeighbours(x, y);
  MergeNeighbours(y, x);
  const int n = int(x.size());
  if (n < 3) throw EMathError(QyText(QyRes::FitCovarianceTooFew));
  FSplines.clear(), FRangeIdx.clear();
  // Runs of strictly rising or strictly falling Y; neighbouring runs share their turning point.
  for (int first = 0; first < n - 1;) {
    const bool rising = y[first + 1] > y[first];
    int last = first + 1;
    while (last + 1 < n && (y[last + 1] > y[last]) == rising) ++last;
    TDoubleDynArray rx(x.begin() + first, x.begin() + last + 1), ry(y.begin() + first, y.begin() + last + 1);
    if (rx.size() < 3) { // one more point on the line through the last two
      rx.push_back(2 * rx.back() - rx[rx.size() - 2]);
      ry.push_back(2 * ry.back() - ry[ry.size() - 2]);
    }
    auto spline = std::make_unique<TQyInterpolationCalculation>();
    spline->OutliersVisible = OutliersVisible;
    spline->Fit(ry, rx, {}, false); // X as a function of Y
    FSplines.push_back(std::move(spline));
    FRangeIdx.push_back(last);
    first = last;
  }
}

// ---- the fit

void TQySimplexFit::SetPrms() {
  FCount = DataCount();
  int valid = 0;
  for (int i = 0; i < FCount; ++i) valid += IsValid(i);
  if (FOrder > valid) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
  if (DoCovariance) {
    try {
      SetupCovar();
    } catch (const std::exception&) {
      throw EMathError(QyText(QyRes::FitCovarianceIndefinite));
    }
  }
  SetOrder(FOrder);
  for (double& c : FCoefs)
    if (c == 0) c = 1.0;
}

void TQySimplexFit::Calculate() {
  if (Iterations > 0) RequireVectors();
  if (FromExpression() && FExpression.isEmpty()) throw EMathError(QyText(QyRes::FitNoFunction));
  FIteration = Iterations;
  FStopIterations = false;
  if (Iterations <= 0) return; // no fit: the present coefficients stay
  if (FOrder <= 0) throw EMathError(QyText(QyRes::FitNoOrder));
  SetPrms();
  const TQySimplex::TError error = [this](const double* corner) { return Error(corner); };
  FSimplex.Start(FCoefs, error);
  do {
    FSimplex.Round(error);
    FCurrentChiSquare = FSimplex.Error(FSimplex.Best());
    FCoefs = FSimplex.Corner(FSimplex.Best());
    FCurrentCorner = FCoefs.data();
    if (OnIteration) OnIteration(Sender);
    --FIteration;
  } while (!FStopIterations && FIteration >= 0 && FCurrentChiSquare != 0);
  GetStatistics();
}

// Weighted means and sums of squares over the valid points; the variances per degree of freedom.
void TQySimplexFit::GetStatistics() {
  double sw = 0, sx = 0, sy = 0;
  for (int i = 0; i < FCount; ++i) {
    if (!IsValid(i)) continue;
    const double w = Wi(i);
    sw += w, sx += w * Xi(i), sy += w * Yi(i);
  }
  FAverageX = sx / sw, FAverageY = sy / sw;
  FVarianceX = FVarianceY = 0;
  for (int i = 0; i < FCount; ++i) {
    if (!IsValid(i)) continue;
    const double w = Wi(i), dx = Xi(i) - FAverageX, dy = Yi(i) - FAverageY;
    FVarianceX += w * dx * dx, FVarianceY += w * dy * dy;
  }
  if (sw != 0) {
    FProbability = DoCovariance ? 1 - FCurrentChiSquare / std::sqrt(FVarianceX * FVarianceY)
                                : 1 - FCurrentChiSquare / FVarianceY;
  }
  FVarianceX /= sw - 1, FVarianceY /= sw - 1;
}
