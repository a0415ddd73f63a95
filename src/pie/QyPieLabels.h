#pragma once
// Where the labels of a pie go, in the unit space of the fit (radius 1, centre at the origin, y
// downwards): inside a segment, or in a box beside the pie that is pushed out of the pie along
// the segment's middle and then moved apart from the others, vertically.
#include "QyPieChart.h"
#include "QyPieGeometry.h"
#include <vector>

// An inside label at the golden section of the radius (of the ring, for donuts with a hole of
// `holePercent`), for a segment with the middle angle `mid`.
QPointF QyInsideLabelPosition(double mid, bool donut, double holePercent);
// The text's angle (counter-clockwise degrees) along the radius, never upside down.
float QyAlignedLabelAngle(double mid);

// The centre of a box of half sizes hw, hh pushed out along `mid` from distance 1 + d in steps of
// 0.001, until the box corner that faces the centre has left the circle of radius 1 + d, and a
// box that straddles the vertical axis has left the circle's height.
QPointF QyPushOutOfPie(double mid, double hw, double hh, double d);

// The callout of a segment: the box pushed out, lowered by `wall` in the lower half (the 3D wall
// lowers the rim there), and shifted with its segment by `shift`.
TQyPieCallout QyPlaceCallout(double start, double sweep, double hw, double hh, double d, double wall,
                             QPointF shift);

// Moves overlapping callouts apart, vertically only: twice downwards in the lower half, then
// twice upwards in the upper half. The overlap test takes each centre for a top left corner.
void QyMoveCalloutsApart(std::vector<TQyPieCallout>& callouts);

// How far the boxes reach beyond the circle, as extents of the fit.
TQyPieExtents QyCalloutExtents(const std::vector<TQyPieCallout>& callouts);
