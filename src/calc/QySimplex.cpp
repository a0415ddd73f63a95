#include "QySimplex.h"

void TQySimplex::Start(const TDoubleDynArray& coefs, const TError& error) {
  FOrder = int(coefs.size());
  FCorners.assign(FOrder + 1, coefs);
  FErrors.assign(FOrder + 1, 0.0);
  FCenter.assign(FOrder, 0.0);
  for (int i = 0; i < FOrder; ++i) FCorners[i][i] *= 2.05;
  for (int i = 0; i <= FOrder; ++i) Evaluate(i, error);
  Rank();
}

void TQySimplex::Rank() {
  FMin = FMax = 0;
  for (int i = 0; i <= FOrder; ++i) {
    if (FErrors[i] < FErrors[FMax]) {
      if (FErrors[i] <= FErrors[FMin]) FMin = i;
    } else {
      FMax = i;
    }
  }
  FTwo = FMin;
  for (int i = 0; i <= FOrder; ++i)
    if (i != FMax && FErrors[i] >= FErrors[FTwo]) FTwo = i;
}

void TQySimplex::Move(double f) {
  TDoubleDynArray& worst = FCorners[FMax];
  for (int j = 0; j < FOrder; ++j) worst[j] = (FCenter[j] - worst[j]) * f + FCenter[j];
}

void TQySimplex::Round(const TError& error) {
  for (int j = 0; j < FOrder; ++j) {
    double sum = 0;
    for (int i = 0; i <= FOrder; ++i)
      if (i != FMax) sum += FCorners[i][j];
    FCenter[j] = sum / FOrder;
  }
  Move(1.0); // reflection
  Evaluate(FMax, error);
  if (FErrors[FMin] > FErrors[FMax]) { // a new best: try twice the way
    FSaved = FCorners[FMax];
    const double saved = FErrors[FMax];
    Move(-2.0);
    Evaluate(FMax, error);
    if (!(FErrors[FMax] < saved)) FCorners[FMax] = FSaved, FErrors[FMax] = saved;
  } else if (FErrors[FTwo] < FErrors[FMax]) {
    Move(-0.5); // contraction
    Evaluate(FMax, error);
    if (FErrors[FTwo] >= FErrors[FMax]) {
      for (int i = 0; i <= FOrder; ++i) {
        if (i == FMin) continue;
        for (int j = 0; j < FOrder; ++j) FCorners[i][j] = (FCorners[i][j] + FCorners[FMin][j]) * 0.5;
        Evaluate(i, error);
      }
    }
  }
  Rank();
}
