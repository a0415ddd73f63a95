// The simplex's own rules, traced by hand on one coefficient: the contraction goes outside only
// (centroid + half the way from the worst), a contraction worse than the second worst corner is
// kept, and one that beats it shrinks the simplex, where the textbook method would do neither.
#include <QySimplex.h>
#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace {
// An error given as a table of points (exact up to rounding of the moves).
TQySimplex::TError Table(std::map<double, double> values) {
  return [values](const double* c) {
    for (auto [x, e] : values)
      if (std::fabs(x - *c) < 1e-9) return e;
    ADD_FAILURE() << "no error for " << *c;
    return 1e9;
  };
}
} // namespace

TEST(QySimplex, TracesOfOneCoefficient) {
  const TQySimplex::TError square = [](const double* c) { return (*c - 3) * (*c - 3); };
  struct Case {
    const char* what;
    double start;
    TQySimplex::TError error;
    int rounds;
    double corners[2]; // corner 0, corner 1 after the rounds
  } cases[] = {
      // Start 2.05 and 1. Round 1 reflects 1 to 3.1 (a new best), 4.15 is no better: 3.1 stays.
      {"reflection", 1, square, 1, {2.05, 3.1}},
      // Round 2 reflects 2.05 to 4.15, worse than the second worst (3.1): contracted to 3.625,
      // still worse, and kept as it is.
      {"kept contraction", 1, square, 2, {3.625, 3.1}},
      // Start 4.1 and 2: the reflection -0.1 is bad, the contraction 0.95 beats the second worst
      // (2), so every corner but the best moves halfway to it: 4.1 -> (0.95 + 2) / 2.
      {"shrink", 2, Table({{4.1, 10}, {2, 1}, {-0.1, 5}, {0.95, 0.5}, {1.475, 0.7}}), 1, {1.475, 2}},
  };
  for (const Case& c : cases) {
    TQySimplex s;
    s.Start({c.start}, c.error);
    for (int r = 0; r < c.rounds; ++r) s.Round(c.error);
    for (int i = 0; i < 2; ++i) EXPECT_NEAR(s.Corner(i)[0], c.corners[i], 1e-12) << c.what << " corner " << i;
  }
}

TEST(QySimplex, RankingTiesMoveTheWorstToTheLaterCorner) {
  TQySimplex s;
  s.Start({1, 1}, [](const double*) { return 4.0; }); // three equal errors
  EXPECT_EQ(s.Worst(), 2);
  EXPECT_EQ(s.Best(), 0);
  EXPECT_EQ(s.SecondWorst(), 1);
}
