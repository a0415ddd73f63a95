#pragma once
// Drawing a thinned polyline fast: where the line fills whole pixel columns from top to bottom
// (millions of noisy values thinned to a few points per column), the antialiased stroke of its
// steep zigzags costs the raster engine one coverage computation per pixel and segment. Such
// runs of dense columns are filled instead as one polygon, the union of the columns' vertical
// extents widened by half the pen; the rest is stroked as before.
#include <QPointF>
class QPainter;

// Draws pts[0..n) as drawPolyline with the painter's pen would: the dense runs as bands when the
// pen is solid, opaque, one pixel wide and the painter antialiases; otherwise plainly.
void QyDrawPolylineWithBands(QPainter* g, const QPointF* pts, int n);
