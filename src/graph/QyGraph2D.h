#pragma once
// The graph control: divides its client area (title, margins, axes, legends, data area), repaints
// all of it in a fixed order through one painter, and keeps the flags of what must be recalculated.
#include "QyLocalize.h"
#include "QyAxis.h"
#include "QySeries.h"
#include "QySeriesHost.h"
#include "QyStyles.h"
#include "QyProperty.h"
#include "QyGraphPart.h"
#include "QyComponent.h"
#include "QyRegisters.h"
#include "QyRichLabel.h"
#include "QyTypes.h"
#include "QyPollingThread.h"
#include "QyZoomSettings.h"
#include <QList>
#include <QPair>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QRectF>
#include <QWidget>
#include <QPagedPaintDevice>
#include <QPicture>
#include <functional>
#include <memory>
#include <vector>

class TQyAxis;
class TQySeries;
class TQyCustomDoubleVector;
class TQyGradientSettings;
class TQyLineSettings;
class QPrintPreviewDialog;
class QDomElement;
class QIODevice;
class TQyIniFile;
class TQyDocumentMedium;

namespace QyGraph2D {
Q_NAMESPACE
enum class TQySmoothingMode { None, HighSpeed, AntiAlias, HighQuality };
Q_ENUM_NS(TQySmoothingMode)
// File formats of SaveImage. Documents store the ordinal, so later formats come last. EMF
// stands for vector output and writes SVG.
enum class TQyImageFileFormat { EMF, BMP, JPEG, PNG, GIF, TIFF, EXIF, Icon, SVG, PDF };
Q_ENUM_NS(TQyImageFileFormat)
} // namespace QyGraph2D
using QyGraph2D::TQySmoothingMode;
using QyGraph2D::TQyImageFileFormat;

struct TQyFindSeriesPointResult {
  bool Found = false;
  TQySeries* Series = nullptr;
  int Index = -1;
  double X = 0, Y = 0;
};

// The base shared by the XY graph and the pie chart: caption, background, smoothing, update
// counter, polling thread and undo link.
class TQyCustomGraph : public QWidget, public TQyRecording, public TQyDeferredInit, public IQyVariablesUser {
  Q_OBJECT
  QY_RECORDING_SIGNAL(TQyCustomGraph)
  Q_PROPERTY(TQyUndoRecorder* UndoStack READ GetUndoStack WRITE SetUndoStack)
  QY_PROPERTY(TQyColor, BackColor, QyRes::GraphBackColor, update()) = 0x00FFFFFFu;
  QY_PROPERTY_OBJECT(TQyGradientSettings, BackgroundGradient);
  QY_PROPERTY(QyGraph2D::TQySmoothingMode, SmoothingMode, nullptr, update()) = TQySmoothingMode::HighQuality;
  QY_PROPERTY_CUSTOM(QString, Caption);
  QY_PROPERTY_CUSTOM(QyTypes::TAlignment, CaptionAlignment) = TAlignment::Center;
  QY_PROPERTY_CUSTOM(TQyColor, CaptionColor) = 0xFF000000u;
  QY_PROPERTY(float, CaptionDistanceAfter, QyRes::GraphCaptionDistanceAfter, Modified()) = 0;
  QY_PROPERTY(float, CaptionDistanceBefore, QyRes::GraphCaptionDistanceBefore, Modified()) = 0;
  QY_PROPERTY(bool, CaptionVisible, QyRes::GraphCaptionVisible, Modified()) = false;
  Q_PROPERTY(TQyFont* CaptionFont READ GetCaptionFont)

public:
  explicit TQyCustomGraph(QWidget* parent = nullptr);
  ~TQyCustomGraph() override;

  TQyUndoRecorder* GetUndoStack() const { return UndoRecorder(); }
  virtual void SetUndoStack(TQyUndoRecorder* stack);
  TQyFont* GetCaptionFont() const;
  TQyRichCaptionObject* CaptionObject() const { return FCaptionObject.get(); }

  virtual void Modified() = 0;
  virtual void Calculate() = 0;
  virtual void BoundsChanged() {}
  void BeginUpdate() { ++FUpdateCount; }
  void EndUpdate();
  bool Updating() const { return FUpdateCount > 0; }
  bool Printing() const { return FPrinting; }
  // The size the layout works for: the control's, or the target's while rendering to a device.
  QSize LayoutSize() const { return FLayoutSize.isValid() ? FLayoutSize : size(); }
  bool RenderingToImage() const { return FRenderingToImage; }
  void ParseCaption();
  QString CaptionAsString() const { return FCaption; }
  // Publishes "Name" and "Caption" for captions elsewhere (after construction); withdrawn on
  // destruction.
  virtual void RegisterVariables();
  void DeRegisterVariables();
  // A value that the title shows has changed: parse it again.
  void VariablesChanged() override { ParseCaption(); }
  // Objects whose captions show this graph's values.
  TQyVariableObjects VariableObjects{this};
  // Sets or clears antialiasing for the configured smoothing mode.
  void SetHighQuality(QPainter* graphics, bool on) const;
  // Made with the graph, started once the graph is complete, ended first thing on destruction.
  TQyPollingThread* PollingThread() const { return FPollingThread.get(); }
  // ---- output to other devices (QyGraphRender.cpp): each kind of graph paints itself onto a
  // painter as a picture of `size`, laid out for it, leaving the control as it was.
  virtual void PaintTo(QPainter* painter, QSize size, bool printing = false) = 0;
  // An image of the control's size (or `size`).
  QImage RenderToImage(QSize size = QSize(), bool antialiased = true);
  void RenderToImage(QImage& image, bool antialiased = true); // into the caller's buffer
  // The resolution a painter's device measures text at, and whether a picture of `size` on it
  // can use the control's own layout (same size, same resolution).
  struct TQyTarget {
    qreal DpiX, DpiY;
    bool SameLayout;
  };
  TQyTarget RenderTarget(QPainter* painter, QSize size) const;
  // Vector output of the control's size (or `size`): SVG and PDF (one page of that size).
  void RenderToSvg(QIODevice* device, QSize size = QSize());
  void RenderToPdf(QIODevice* device, QSize size = QSize());

  // ---- output to files, printers and the clipboard (QyGraphImage.cpp): the same for every
  // control on this base, which supplies its picture through ImageSize and PaintToImage.
  // The extent of the picture.
  virtual QSize ImageSize() { return size(); }
  // Paints the picture with its top left corner at (dx, dy): the one routine of every output.
  // `printing` draws ticks at fractional positions.
  virtual void PaintToImage(QPainter* g, float dx, float dy, bool printing) = 0;
  // Writes the picture in `format`. With `useColor` the background is `color` (opaque), else
  // transparent where the control's own background is. Raster formats are written at
  // `pixelRatio` image pixels per pixel of the control: the same layout, crisper.
  virtual void SaveImage(QIODevice* out, TQyImageFileFormat format, TQyColor color = 0xFFFFFFFFu,
                         bool useColor = true, qreal pixelRatio = 1);
  void SaveImage(const QString& fileName, TQyImageFileFormat format, TQyColor color = 0xFFFFFFFFu,
                 bool useColor = true, qreal pixelRatio = 1);
  // The picture on `color`, with every pixel of that colour made transparent.
  QImage AsTBitmap(TQyColor color);
  // The picture as recorded drawing commands, on a transparent background.
  QPicture AsTMetafile();
  // Prints into `rect` (device units; the printable page when empty) as vector data, keeping
  // the picture's proportions: centred across when the rectangle is wider, at its top.
  virtual void PrintTo(QPagedPaintDevice* printer, QRectF rect = QRectF());
  // A preview of the printed page, from which the user may print; the caller shows it.
  QPrintPreviewDialog* NewPrintPreview(QWidget* parent = nullptr);
  // A PNG image (at the screen's pixel ratio) and SVG, both in one clipboard entry.
  virtual void CopyToClipboard();

  // ---- documents (QyGraphDocument.cpp): the graph's record with everything hanging on it. A
  // read either completes or raises EReadError and leaves the graph as it was; it records no
  // undo entries. XML and INI carry the vectors when the last stream write did.
  virtual void WriteTo(QIODevice* stream, bool withVectors);
  virtual void ReadFrom(QIODevice* stream);
  virtual void WriteTo(QDomElement& node);
  virtual void ReadFrom(const QDomElement& node);
  virtual void WriteTo(TQyIniFile& ini, const QString& section);
  virtual void ReadFrom(const TQyIniFile& ini, const QString& section);
  void WriteTo(const QString& fileName, bool withVectors);
  void ReadFrom(const QString& fileName);
  bool WithVectors() const { return FWithVectors; }
  // A document is being read: axes leave their ranges and zoom stages as the document has them.
  bool Reading() const { return FReading; }

protected:
  void AfterConstruction() override;
  void StopPolling() { FPollingThread->Terminate(); }
  void resizeEvent(QResizeEvent* e) override;

  std::unique_ptr<TQyRichCaptionObject> FCaptionObject;
  std::unique_ptr<TQyPollingThread> FPollingThread;
  int FUpdateCount = 0;
  bool FFirstPaint = true;
  bool FCaptionSet = false;
  bool FPrinting = false;
  bool FRenderingToImage = false;
  bool FWithVectors = true;
  bool FReading = false;
  QSize FLayoutSize;

private:
  // Reads the whole document, or puts the graph back as it was and raises.
  void ReadDocument(TQyDocumentMedium& medium);
};

class TQyGraph2D : public TQyCustomGraph, public IQySeriesHost {
  Q_OBJECT
  QY_PROPERTY_OBJECT(TQyLineSettings, DataAreaFrame);
  QY_PROPERTY(TQyColor, DataAreaColor, QyRes::GraphDataAreaColor, update()) = 0x00FFFFFFu;
  QY_PROPERTY_OBJECT(TQyGradientSettings, DataAreaGradient);
  QY_PROPERTY(float, DistanceBorderAxisTop, QyRes::GraphDistanceTop, Modified()) = 0;
  QY_PROPERTY(float, DistanceBorderAxisBottom, QyRes::GraphDistanceBottom, Modified()) = 0;
  QY_PROPERTY(float, DistanceBorderAxisLeft, QyRes::GraphDistanceLeft, Modified()) = 0;
  QY_PROPERTY(float, DistanceBorderAxisRight, QyRes::GraphDistanceRight, Modified()) = 0;
  QY_PROPERTY_OBJECT(TQyLineSettings, MajorGridHorizontal);
  QY_PROPERTY_OBJECT(TQyLineSettings, MinorGridHorizontal);
  QY_PROPERTY_OBJECT(TQyLineSettings, MajorGridVertical);
  QY_PROPERTY_OBJECT(TQyLineSettings, MinorGridVertical);
  QY_PROPERTY(bool, ZeroOrigin, QyRes::GraphZeroOrigin, Modified()) = false;
  Q_PROPERTY(TQyAxis* PrimaryXAxis READ GetPrimaryXAxis WRITE SetPrimaryXAxis)
  Q_PROPERTY(TQyAxis* PrimaryYAxis READ GetPrimaryYAxis WRITE SetPrimaryYAxis)
  Q_PROPERTY(TQyFont* Font READ GetCaptionFont)
  QY_PROPERTY_OBJECT(TQyZoomSettings, Zoom);

public:
  explicit TQyGraph2D(QWidget* parent = nullptr);
  ~TQyGraph2D() override;

  TQyAxis* GetPrimaryXAxis() const override { return FPrimaryXAxis; }
  TQyAxis* GetPrimaryYAxis() const override { return FPrimaryYAxis; }
  void SetPrimaryXAxis(TQyAxis* axis);
  void SetPrimaryYAxis(TQyAxis* axis);
  void SetUndoStack(TQyUndoRecorder* stack) override;

  // ---- the deferred work
  void Modified() override;
  void Calculate() override;
  void BoundsChanged() override;
  void SeriesModified() override;
  void LegendsModified() override;
  // `picture`: a series whose calculation fails is left out of the picture (it keeps its failed
  // state until its data or settings change) instead of ending the picture.
  void TestSeriesAndAxis(bool picture = false);
  // The poll (on the interface thread): unless updating or a layout is due anyway, the series
  // look at their vectors and the axes at their ranges. Nothing changed costs a comparison of
  // counts per series.
  void SeriesPoll(QObject* sender);
  void TestPrimaryAxis() override;
  void CheckCoupled();
  void SortLayers();
  void RepaintChildGraphs();
  bool NeedsCalculate() const { return FNeedsCalculate; }

  // ---- drawing
  void PaintGr(QPainter* graphics);
  void SetDataClip(QPainter* graphics);
  // ---- output to other devices (QyGraphRender.cpp)
  // The one routine of every output: paints the graph onto `painter` as a picture of `size`
  // (in the painter's units), laid out for that size with text measured for the painter's device
  // (a painter resolves fonts for its device's resolution, whatever its transformation). The
  // control itself is left exactly as it was. `printing` draws ticks at fractional positions.
  void PaintTo(QPainter* painter, QSize size, bool printing = false) override;
  // The picture of every output: the coupled graphs stacked (children above the master, the last
  // child on top), without the strips that hold only scroll bars.
  QSize ImageSize() override;
  void PaintToImage(QPainter* g, float dx, float dy, bool printing) override;
  // How much of the left side the picture leaves out: a strip that holds only a scroll bar.
  int ImageGraphLeft();
  // The height of the stacked picture, without the horizontal scroll bars.
  int ImgageGraphHeight();

  // ---- parts: series, axes, legends, markers and every later kind (QyGraphPart.h)
  // Every part of this graph in paint order: the series in layer order, the other registered
  // parts in the order they came, then the child widgets that are parts, in child order.
  QList<IQyGraphPart*> Parts() const;
  // A part that is not a child widget of the graph (a series, a legend on another parent) joins
  // and leaves here; child widgets are parts by being children.
  void RegisterPart(QObject* part);
  void UnregisterPart(QObject* part);
  // Tells every part; master and child graphs pass legend changes on to each other.
  void NotifyParts(TQyGraphChange change);
  void RegisterSeries(TQySeries* series) override;
  void UnregisterSeries(TQySeries* series) override;
  const QList<TQySeries*>& RelatedSeries() const override { return FRelatedSeries; }
  QList<TQyAxis*> Axes() const;
  QList<TQyGraph2D*> ChildGraphs() const;
  bool IsMasterGraph() const { return FIsMasterGraph; }
  bool IsChildGraph() const override { return FIsChildGraph; }

  // ---- picking and data
  TQyFindSeriesPointResult FindSeriesPoint(float x, float y);
  bool MouseInDataArea(QPointF p) const { return FDataArea.contains(p); }
  QList<TQyCustomDoubleVector*> GetVectorsList() const;
  // Read holds on every vector that the series read, for one poll, picture or pick: another
  // thread may append meanwhile only between them.
  TQyVectorReadLocks HoldSeriesData() const;
  void UndoPushSeriesVectors(); // all data vectors as one undo entry (QyGraphUndo.cpp)

  // The data area in client pixels; written only by the layout pass.
  QRectF DataArea() const override { return FDataArea; }
  void SetDataArea(const QRectF& r) override { FDataArea = r; }
  // Coupled graphs (QyGraphCoupled.cpp): the master and the graphs on its primary X axis share the
  // left and right edges of their data areas.
  QRectF CoupleDataArea(const QRectF& area) override;
  bool InDrag() const override { return FIsPanning; }
  QObject* ZoomSettings() const override { return FZoom; }
  bool CreatingPrimaryAxes() const { return FCreatingPrimaryAxes; }

  // ---- what axes and series ask of the graph (the state of the common graph base)
  bool Updating() const override { return TQyCustomGraph::Updating(); }
  bool Printing() const override { return TQyCustomGraph::Printing(); }
  bool RenderingToImage() const override { return TQyCustomGraph::RenderingToImage(); }
  bool Destroying() const override { return TQyCustomGraph::Destroying(); }
  bool Reading() const override { return TQyCustomGraph::Reading(); }
  TQyUndoRecorder* GetUndoStack() const override { return TQyCustomGraph::GetUndoStack(); }
  TQyRichCaptionObject* CaptionObject() const override { return TQyCustomGraph::CaptionObject(); }
  bool TitleShown() const override { return FCaptionVisible && !FCaption.isEmpty(); }
  float GetCaptionDistanceBefore() const override { return TQyCustomGraph::GetCaptionDistanceBefore(); }
  float GetCaptionDistanceAfter() const override { return TQyCustomGraph::GetCaptionDistanceAfter(); }
  TAlignment GetCaptionAlignment() const override { return TQyCustomGraph::GetCaptionAlignment(); }
  bool NoSmoothing() const override { return FSmoothingMode == TQySmoothingMode::None; }
  void Invalidate() override { update(); }
  QSize LayoutSize() const override { return TQyCustomGraph::LayoutSize(); }
  // ---- zoom, pan and scroll bars (QyGraphZoom.cpp; the pointer in QyGraphMouse, the bars in
  // QyGraphScroll). Each command acts on every axis of the graphs coupled by a shared X axis.
  // Every axis takes its automatic ends again and forgets its zoom history.
  void ZoomReset() override;
  void ZoomTo(QPoint p1, QPoint p2);
  void ZoomBack();
  void RedoZoom();
  void ZoomToStage(int stage);
  bool GetCanZoomBack() const;
  bool GetCanRedoZoom() const;
  int GetCurrentZoomStage() const;
  int GetZoomBufferSize() const;
  // The other graphs of the group take a stage of their present ends (stages stay aligned).
  void FixChildZoomStack();
  // Scales every axis by `factor` about the value under `p`, within the ends `from` or the data.
  void ScaleAxesAbout(QPointF p, double factor, const std::vector<QPair<double, double>>& from);
  // A pan or a scroll-bar drag is under way: a layout then walks the ticks only.
  bool IsPanning() const { return FIsPanning; }
  void SetPanning(bool on) { FIsPanning = on; }
  TQyNotifyEvent OnBeginZoom, OnEndZoom, OnBeginPanning, OnEndPanning;
  void TakeLayoutMargins(TQyLayoutMargins& margins) override;
  void DataAreaPlaced(const QRectF& area) override;

protected:
  void paintEvent(QPaintEvent* e) override;
  // Child widgets that come, go, show or hide change the layout (a part takes room).
  void childEvent(QChildEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

private:
  void RedoLayout();
  bool PartShown(IQyGraphPart* part) const;
  // ---- the box of a graph with depth (QyGraphDepth.cpp)
  void MeasureDepth(const QList<IQyGraphPart*>& parts);
  void PaintWalls(QPainter* g);
  void PaintGridLine3D(QPainter* g, bool alongX, float p);
  void PaintBoxEdges(QPainter* g);
  void PaintPicture(QPainter* g);
  void PaintPass(QPainter* g, TQyPaintPass pass, const QList<IQyGraphPart*>& parts);
  void PaintOwnShare(QPainter* g, TQyPaintPass pass);
  void PaintPart(QPainter* g, IQyGraphPart* part, TQyPaintPass pass);
  void PaintFrame(QPainter* g);
  void PaintBackground(QPainter* g);
  void PaintDataArea(QPainter* g);
  void PaintGrid(QPainter* g, TQyAxis* axis, TQyLineSettings* major, TQyLineSettings* minor);
  TQyGraph2D* CoupledMaster();
  QList<TQyGraph2D*> CoupledGroup();
  void ForCoupledAxes(const std::function<void(TQyAxis*)>& op);
  void ShrinkFrameToData(const QList<TQyAxis*>& axes, float l, float r, float t, float b,
                         std::vector<double>& starts, std::vector<double>& stops);
  void AlignCoupledGraphs();
  void TakeDataEdges(float left, float right);
  TQyAxis* MakePrimaryAxis(const QString& base, const char* caption, TQyAxisPosition position);

  QPointer<TQyAxis> FPrimaryXAxis, FPrimaryYAxis;
  QList<TQySeries*> FRelatedSeries;
  QList<QPointer<QObject>> FRegisteredParts;
  // Depth of the data area's box in whole pixels, taken from the first part with depth.
  struct TDepth {
    bool Has = false, Grid3D = false, RightYAxis = false;
    int X = 0, Y = 0;
    float XAxisLine = 0, YAxisLine = 0;
  } FDepth;
  QList<QPointer<TQyGraph2D>> FChildGraphs;
  QRectF FDataArea;
  QRectF FOwnDataArea; // the data area as this graph's own layout made it, before coupling
  bool FNeedsCalculate = true;
  bool FIsMasterGraph = false, FIsChildGraph = false;
  bool FCreatingPrimaryAxes = false;
  bool FRepaintAfterPaint = false;
  bool FIsPanning = false;
  QRect FLastClipRect;
};
