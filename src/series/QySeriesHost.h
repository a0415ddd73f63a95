#pragma once
// What a series needs of the graph it is drawn in, beyond what its axes need. The graph
// implements it; the series know the graph only through it.
#include "QyAxisHost.h"
#include <QList>
#include <QSize>

class TQySeries;

class IQySeriesHost : public IQyAxisHost {
public:
  virtual void RegisterSeries(TQySeries* series) = 0;
  virtual void UnregisterSeries(TQySeries* series) = 0;
  virtual const QList<TQySeries*>& RelatedSeries() const = 0;
  // The graph lays out again before the next picture.
  virtual void Modified() = 0;
  virtual void LegendsModified() = 0;
  // Asks for a repaint.
  virtual void Invalidate() = 0;
  virtual bool Destroying() const = 0;
  virtual QRectF DataArea() const = 0;
  // Drawing goes to an image rather than the screen.
  virtual bool RenderingToImage() const = 0;
  // Smoothing is off altogether: plain drawing is allowed.
  virtual bool NoSmoothing() const = 0;
};
