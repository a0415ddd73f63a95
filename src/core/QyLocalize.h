#pragma once
// The message table: every text the system shows (error messages, undo captions, prompts) stands
// here once, by name. Code refers to QyRes::Name; QyText() is the one place a translation could hook.
#include <QString>
#include <QVariant>
#include <initializer_list>

namespace QyRes {
// ---- Errors of general use
inline constexpr char IndexOutOfRange[] = "i=%d index out of range";

// ---- Graph (undo captions)
inline constexpr char GraphCaption[] = "Caption used in title of graph";
inline constexpr char GraphCaptionAlignment[] = "Graph title alignment";
inline constexpr char GraphBackColor[] = "Graph background color";
inline constexpr char GraphCaptionColor[] = "Color of graph title";
inline constexpr char GraphCaptionDistanceAfter[] = "Distance below graph title";
inline constexpr char GraphCaptionDistanceBefore[] = "Distance above graph title";
inline constexpr char GraphCaptionFont[] = "Font of graph title";
inline constexpr char GraphCaptionVisible[] = "Visibility of graph title";
inline constexpr char GraphDataAreaColor[] = "Color of graph data area";
inline constexpr char GraphDistanceTop[] = "Graph border distance at top";
inline constexpr char GraphDistanceBottom[] = "Graph border distance at bottom";
inline constexpr char GraphDistanceLeft[] = "Graph border distance left";
inline constexpr char GraphDistanceRight[] = "Graph border distance right";
inline constexpr char GraphPrimaryXAxis[] = "Graph primary X-axis";
inline constexpr char GraphPrimaryYAxis[] = "Graph primary Y-axis";
inline constexpr char GraphZeroOrigin[] = "Graph axes cross at (0,0)";
inline constexpr char GraphVarName[] = "Internal name of the graph control";
inline constexpr char GraphDefaultXCaption[] = "X-Axis";
inline constexpr char GraphDefaultYCaption[] = "Y-Axis";

// ---- Graph zoom, pan and scroll bars (undo captions and messages)
inline constexpr char ZoomAuto[] = "Graph auto zooming";
inline constexpr char ZoomOptimizeSeries[] = "Graph zoom optimize for series data";
inline constexpr char ZoomBackOnClickBeside[] = "Graph zoom back clicking beside data";
inline constexpr char ZoomResetOnDoubleClickBeside[] = "Graph zoom reset double clicking beside data";
inline constexpr char ZoomResetOnFrame[] = "Graph zoom reset dragging bottom/right top/left";
inline constexpr char ZoomStartZoom[] = "Graph zoom start keys";
inline constexpr char ZoomStartPanning[] = "Graph panning start keys";
inline constexpr char ZoomHScrollbarVisible[] = "Graph zoomed show horizontal scrollbar";
inline constexpr char ZoomVScrollbarVisible[] = "Graph zoomed show vertical scrollbar";
inline constexpr char ZoomScrollSmallIncrement[] = "Graph scrollbars small increment";
inline constexpr char ZoomScrollLargeIncrement[] = "Graph scrollbars large increment";
inline constexpr char ZoomWheel[] = "Graph zoom with the mouse wheel";
inline constexpr char ZoomSameStartKeys[] = "Zooming and panning not allowed to start with same parameters";

// ---- Pie and donut charts (undo captions and texts)
inline constexpr char PieChartType[] = "Pie/Donut 3D chart type";
inline constexpr char PieValues[] = "Pie/Donut values data";
inline constexpr char PieExplodePercent[] = "Segment shift from center";
inline constexpr char PieStartAngle[] = "Pie/Donut start angle";
inline constexpr char PieTotalAngle[] = "Pie/Donut total angle";
inline constexpr char PieElevation[] = "Pie/Donut 3D elevation";
inline constexpr char PieHeight[] = "Height of pie in 3D mode";
inline constexpr char PieDonutHoleSize[] = "Donut size of hole";
inline constexpr char PieDropShadow[] = "Drop shadow below pie chart";
inline constexpr char PieOrderAscending[] = "Order pie segments";
inline constexpr char PieOutliersVisible[] = "Series visibility of outliers";
inline constexpr char PieCaptions[] = "Pie/Donut captions";
inline constexpr char PieLabelPosition[] = "Labels position";
inline constexpr char PieLabelFrom[] = "Labels from list/values/percent";
inline constexpr char PieLabelFormat[] = "Labels output format";
inline constexpr char PieLabelColor[] = "Labels color";
inline constexpr char PieLegendChart[] = "Legend pie chart";
inline constexpr char PieLegendLabelsFrom[] = "Pie legend labels style";
inline constexpr char PieLegendDistance[] = "Pie legend distance";
inline constexpr char PieLabelSize[] = "Label size";
inline constexpr char PieCalloutArrowVisibleMode[] = "Visibility mode of callouts";
inline constexpr char PieCalloutBackColor[] = "Back color of callouts";
inline constexpr char PieCalloutRaised[] = "Raised callouts";
inline constexpr char PieCalloutLowered[] = "Lowered callouts";
inline constexpr char PieCalloutShadow[] = "Shadow below callouts";
inline constexpr char PieCalloutDistanceToPie[] = "Callout pie distance";
inline constexpr char PieCalloutSpaceToBorder[] = "Calllout space to border";
inline constexpr char PieCalloutRounding[] = "Callout border rounding";
inline constexpr char PieEmpty[] = "empty";

// ---- Axis (undo captions and messages)
inline constexpr char AxisCaption[] = "Axis caption";
inline constexpr char AxisCaptionAlignment[] = "Alignment of axis caption";
inline constexpr char AxisCaptionColor[] = "Color of axis caption";
inline constexpr char AxisCaptionDistanceAfter[] = "Distance below axis caption";
inline constexpr char AxisCaptionDistanceBefore[] = "Distance above axis caption";
inline constexpr char AxisCaptionFont[] = "Font of axis caption";
inline constexpr char AxisCaptionVisible[] = "Visibility of axis caption";
inline constexpr char AxisCaptionHorizontal[] = "Horizontal caption if axis is vertical";
inline constexpr char AxisExtraDigits[] = "Axis numbers extra decimal spaces";
inline constexpr char AxisFont[] = "Font of axis scaling numbers";
inline constexpr char AxisForeColor[] = "Axis foreground color";
inline constexpr char AxisNumbersColor[] = "Axis color of scaling numbers";
inline constexpr char AxisRubricsAngle[] = "Axis angle of rubrics captions";
inline constexpr char AxisScaling[] = "Axis scaling";
inline constexpr char AxisLogToNormal[] = "Log to normal scaling switching range";
inline constexpr char AxisMovingSlitWidth[] = "Width of moving range scaling";
inline constexpr char AxisMovingSlitIncrement[] = "Incement to move axis range";
inline constexpr char AxisRubrics[] = "Axis rubrics captions";
inline constexpr char AxisNumbersVisible[] = "Visibility of axis scaling numbers";
inline constexpr char AxisPosition[] = "Axis position in graph";
inline constexpr char AxisAutoTickParts[] = "Automatic tick partitions";
inline constexpr char AxisLabelDistanceFactor[] = "Factor for distance of axis labels";
inline constexpr char AxisLabelPart[] = "Axis partitions for labels";
inline constexpr char AxisMajorTickPart[] = "Axis partitions for major ticks";
inline constexpr char AxisTickPart[] = "Axis partitions for minor ticks";
inline constexpr char AxisMajorGridMode[] = "Axis major grid mode";
inline constexpr char AxisThicknes[] = "Width of axis line";
inline constexpr char AxisMajorTickThicknes[] = "Width of major tick lines";
inline constexpr char AxisTickThicknes[] = "Width of minor tick lines";
inline constexpr char AxisTickLength[] = "Axis minor ticks length";
inline constexpr char AxisMajorTickLength[] = "Axis major ticks length";
inline constexpr char AxisMajorTickColor[] = "Axis color of major tickmarks";
inline constexpr char AxisTickColor[] = "Axis color of minor tickmarks";
inline constexpr char AxisTicksPointToData[] = "Axis ticks point to graph data area";
inline constexpr char AxisTwisted[] = "Axis twist order of numbers";
inline constexpr char AxisIsSlave[] = "Axis as slave to other axis";
inline constexpr char AxisSlaveSlope[] = "Multiplier to convert master scaling";
inline constexpr char AxisSlaveOffset[] = "Offset to convert master scaling";
inline constexpr char AxisMasterAxis[] = "Master axis";
inline constexpr char AxisStart[] = "Axis range start";
inline constexpr char AxisStop[] = "Axis range stop";
inline constexpr char AxisStartEnd[] = "Auto ranging mode of axis start";
inline constexpr char AxisStopEnd[] = "Auto ranging mode of axis stop";
inline constexpr char AxisEndRounding[] = "Axis ends rounding mode";
inline constexpr char AxisMaxForExtraExponent[] = "Maximum to show exta exponent at axis";
inline constexpr char AxisMinForExtraExponent[] = "Minimum to show exta exponent at axis";
inline constexpr char AxisDistanceValuesAxis[] = "Distance between graph data area and axis";
inline constexpr char AxisDistanceAxisLabels[] = "Distance between axis and scaling labels";
inline constexpr char AxisDistanceExtraExponent[] = "Distance between axis and extra exponent";
inline constexpr char AxisDistanceNumbersCaption[] = "Distance between axis scaling numbers and caption";
inline constexpr char AxisDistanceToBorder[] = "Distance between axis caption and border";
inline constexpr char AxisVisible[] = "Axis visible";
inline constexpr char AxisRubricsWithDatabase[] = "Setting rubrics not allowed with database binding set";

// ---- Series (undo captions)
inline constexpr char SeriesVisible[] = "Series visibility";
inline constexpr char SeriesCaption[] = "Series caption";
inline constexpr char SeriesIncludeInLegend[] = "Series visibility in legends";
inline constexpr char SeriesOutliersVisible[] = "Series visibility of outliers";
inline constexpr char SeriesXAxis[] = "Series X-axis reference";
inline constexpr char SeriesYAxis[] = "Series Y-axis reference";
inline constexpr char SeriesXData[] = "Series X-data reference";
inline constexpr char SeriesYData[] = "Series Y-data reference";
inline constexpr char SeriesLayer[] = "Series drawing order";
inline constexpr char SeriesVarName[] = "Internal name of the series";
inline constexpr char SeriesVarCaption[] = "Caption of the series e.g. used in legends";

// ---- Markers (undo captions)
inline constexpr char MarkerCaption[] = "Marker caption";
inline constexpr char MarkerCaptionVisible[] = "Marker caption visible";
inline constexpr char MarkerCaptionVertical[] = "Marker vertical caption";
inline constexpr char MarkerCaptionDeltaX[] = "Marker caption delta X";
inline constexpr char MarkerCaptionDeltaY[] = "Marker caption delta Y";
inline constexpr char MarkerForeColor[] = "Marker foreground color";
inline constexpr char MarkerClipToData[] = "Marker clip to graph drawing area";
inline constexpr char MarkerSnapToFunctions[] = "";  // recorded by its property name alone
inline constexpr char MarkerCaptionBackColor[] = "Back color of captions";
inline constexpr char MarkerCaptionBackRaised[] = "Raised captions background";
inline constexpr char MarkerCaptionBackLowered[] = "Lowered captions background";
inline constexpr char MarkerCaptionBackShadow[] = "Shadow below captions background";
inline constexpr char MarkerCaptionBackSpaceToBorder[] = "Captions background space to border";
inline constexpr char MarkerCaptionBackRounding[] = "Captions background border rounding";
inline constexpr char MarkerFont[] = "Marker font";
inline constexpr char MarkerXAxis[] = "Marker X-axis";
inline constexpr char MarkerYAxis[] = "Marker Y-axis";
inline constexpr char MarkerX[] = "Marker set X-position";
inline constexpr char MarkerY[] = "Marker set Y-position";
inline constexpr char MarkerSnappedSeries[] = "Marker snapped series";
inline constexpr char MarkerMove[] = "Marker move";
inline constexpr char MarkerCaptionPosition[] = "Caption of marker relative to";
inline constexpr char CrossHairCaptionPosition[] = "Cross hair caption in quadrant";
inline constexpr char MarkerArrowDeltaX[] = "Marker arrow delta X";
inline constexpr char MarkerArrowDeltaY[] = "Marker arrow delta Y";
inline constexpr char MarkerArrowAngle[] = "Marker arrow angle";
inline constexpr char MarkerArrowLength[] = "Marker length of arrow";
inline constexpr char MarkerArrowBentLength[] = "Marker arrow bent length";
inline constexpr char MarkerArrowGripMoved[] = "Marker arrow hovered grip moved";
inline constexpr char MarkerVarX[] = "X-position of the marker in axis units";
inline constexpr char MarkerVarY[] = "Y-position of the marker in axis units";
inline constexpr char IndexerSetValue[] = "TQyIndexer is not supposed to set values!";

// ---- Legends (undo captions)
inline constexpr char LegendCaption[] = "Legend caption";
inline constexpr char LegendCaptionAlignment[] = "Legend caption alignment";
inline constexpr char LegendCaptionColor[] = "Legend caption color";
inline constexpr char LegendCaptionDistanceAfter[] = "Legend distance below caption";
inline constexpr char LegendCaptionDistanceBefore[] = "Legend distance above caption";
inline constexpr char LegendCaptionFont[] = "Legend caption font";
inline constexpr char LegendCaptionVisible[] = "Legend caption visible";
inline constexpr char LegendBackColor[] = "Legend background color";
inline constexpr char LegendForeColor[] = "Legend color of items text";
inline constexpr char LegendDropShadow[] = "Drop shadow below legend";
inline constexpr char LegendBorderLowered[] = "Legend border lowered drawing";
inline constexpr char LegendBorderRaised[] = "Legend border raised drawing";
inline constexpr char LegendRows[] = "Legend number of rows";
inline constexpr char LegendColumns[] = "Legend number of columns";
inline constexpr char LegendItemHeight[] = "Legend items height";
inline constexpr char LegendItemWidth[] = "Legend item width";
inline constexpr char LegendItemsOrder[] = "Legend items order by row/column";
inline constexpr char LegendDistanceItemCaption[] = "Distance between legend items and caption";
inline constexpr char LegendDistanceBetweenLines[] = "Distance between legend item lines";
inline constexpr char LegendDistanceBetweenColumns[] = "Distance between legend item columns";
inline constexpr char LegendDistanceToBorder[] = "Distance of legend items to border";
inline constexpr char LegendCornerRounding[] = "Legend border corner rounding radius";
inline constexpr char LegendFont[] = "Legend items text font";
inline constexpr char LegendVisible[] = "Legend visible";
inline constexpr char LegendGraph[] = "Legend graph";
inline constexpr char LegendItemsOrderList[] = "Legend items order list";
inline constexpr char LegendPosition[] = "Legend position";

// ---- Style objects, colours, drawing
inline constexpr char StyleGradientVisible[] = "Gradient visible";
inline constexpr char StyleGradientStyle[] = "Gradient style";
inline constexpr char StyleGradientFirstColor[] = "Gradient first color";
inline constexpr char StyleGradientMiddleColor[] = "Gradient middle color";
inline constexpr char StyleGradientLastColor[] = "Gradient last color";
inline constexpr char StyleGradientLinearAngle[] = "Linear gradient angle";
inline constexpr char StyleGradientLinearCenter[] = "Linear gradient center";
inline constexpr char StyleGradientRadialCenterX[] = "X component of gradient center";
inline constexpr char StyleGradientRadialCenterY[] = "Y component of gradient center";
inline constexpr char StyleLineColor[] = "Line color";
inline constexpr char StyleLineDashStyle[] = "Line dash style";
inline constexpr char StyleLineWidth[] = "Line width";
inline constexpr char StyleLineVisible[] = "Line visible";
inline constexpr char StyleAreaVisible[] = "Filled area visible";
inline constexpr char StyleAreaForeColor[] = "Area fill foreground color";
inline constexpr char StyleAreaBackColor[] = "Area fill background color";
inline constexpr char StyleAreaStyle[] = "Area fill style";
inline constexpr char StyleSymbolVisible[] = "Point symbol visible";
inline constexpr char StyleSymbolSize[] = "Point symbol size";
inline constexpr char StyleSymbolBorderLineWidth[] = "Point symbol borderline width";
inline constexpr char StyleSymbolBorderColor[] = "Point symbol borderline color";
inline constexpr char StyleSymbolFillColor[] = "Point symbol fill color";
inline constexpr char StyleSymbolSelection[] = "Point symbol selection";
inline constexpr char StyleArrowPointLength[] = "Arrow tip point length";
inline constexpr char StyleArrowInnerLength[] = "Arrow tip point inner length";
inline constexpr char StyleArrowPointHeight[] = "Arrow tip point height";
inline constexpr char StyleAxisArrowVisible[] = "Axis arrow visible";
inline constexpr char StyleAxisArrowPointLength[] = "Axis arrow tip point length";
inline constexpr char StyleAxisArrowInnerLength[] = "Axis arrow tip point inner length";
inline constexpr char StyleAxisArrowPointHeight[] = "Axis arrow tip point height";

// ---- Expressions (the expression subsystem adds here)
inline constexpr char ExprClosingBracketsMissing[] = "%u closing brackets missing";
inline constexpr char ExprOpeningBracketsMissing[] = "%u opening brackets missing";
inline constexpr char ExprParsingError[] = "Parsing error in function:\r%s";
inline constexpr char ExprNoValidExpression[] = "No valid expression defined";
inline constexpr char ExprFloatZeroDivide[] = "Floating point division by zero";
inline constexpr char ExprFloatInvalidOp[] = "Invalid floating point operation";
inline constexpr char ExprFloatOverflow[] = "Floating point overflow";
inline constexpr char ExprPiHelp[] = "Circle number, approximately 3.14159";
inline constexpr char ExprEHelp[] = "Base of natural logarithm, approximately 2.718282";
inline constexpr char ExprRandomHelp[] = "Returns a random number within the range 0 <= X < 1";
inline constexpr char ExprAbsHelp[] = "Absolute positive value";
inline constexpr char ExprArcCosHelp[] = "Reciprocal of cosine";
inline constexpr char ExprArcCoshHelp[] = "Reciprocal of hyperbolic cosine";
inline constexpr char ExprArcSinHelp[] = "Reciprocal of Sine";
inline constexpr char ExprArcSinhHelp[] = "Reciprocal of hyperbolic sine";
inline constexpr char ExprArcTanHelp[] = "Reciprocal of tangent";
inline constexpr char ExprArcTanhHelp[] = "Reciprocal of hyperbolic tangent";
inline constexpr char ExprCeilHelp[] = "The smallest integer greater than or equal to its argument";
inline constexpr char ExprCosHelp[] = "Cosine";
inline constexpr char ExprCoshHelp[] = "Hyperbolic cosine";
inline constexpr char ExprCotanHelp[] = "Cotangent";
inline constexpr char ExprDegToRadHelp[] = "Convert angle degrees to radiant"; // RadToDeg shares it
inline constexpr char ExprExpHelp[] = "e (the base of natural logarithms) raised to a power";
inline constexpr char ExprFloorHelp[] = "The largest integer that is not greater than the argument";
inline constexpr char ExprFracHelp[] = "The fractional part of a real number";
inline constexpr char ExprIntHelp[] = "The integer portion of a real number";
inline constexpr char ExprLnHelp[] = "The natural logarithm of a number";
inline constexpr char ExprLg10Help[] = "The logarithm base 10 of a number"; // Lg shares it
inline constexpr char ExprLg2Help[] = "The logarithm base 2 of a number";
inline constexpr char ExprRoundHelp[] = "Returns an integer closest in value to the argument";
inline constexpr char ExprSinHelp[] = "Sine";
inline constexpr char ExprSinhHelp[] = "Hyperbolic sine";
inline constexpr char ExprSqrtHelp[] = "Square root";
inline constexpr char ExprSqrHelp[] = "Square";
inline constexpr char ExprTanHelp[] = "Tangent";
inline constexpr char ExprTanhHelp[] = "Hyperbolic tangent";

// ---- Text and time helpers (the text subsystem adds here)
inline constexpr char InvalidFloat[] = "'%s' is not a valid floating point value";
inline constexpr char InvalidInteger[] = "'%s' is not a valid integer value";
inline constexpr char InvalidFormat[] = "Format '%s' invalid or incompatible with argument";
inline constexpr char ArgumentMissing[] = "No argument for format '%s'";
inline constexpr char InvalidFloatOperation[] = "Invalid floating point operation";

// ---- Undo history and persistence (the undo subsystem adds here)
inline constexpr char UndoPropertyNotFound[] = "Property: \"%s\" not found";
inline constexpr char UndoNoComponentName[] = "Component does not have a name";
inline constexpr char UndoOnlyOneDimArrays[] = "Only one dimensional arrays suported";
inline constexpr char UndoTooManyStopGroup[] = "Undo stack has too many StopGroup statements";
inline constexpr char UndoGraphSeriesData[] = "Graph series data";
inline constexpr char XMLReadError[] = "XMLReadError: node \"%s\" not found";
inline constexpr char StreamReadError[] = "Stream read error";
inline constexpr char StreamWriteError[] = "Stream write error";
inline constexpr char FileCreateError[] = "Cannot create file \"%s\". %s";
inline constexpr char FileOpenError[] = "Cannot open file \"%s\". %s";
inline constexpr char ImageNoWriter[] = "There is no writer for images in %s format";
inline constexpr char ImageWriteError[] = "Cannot write the image as %s. %s";

// ---- Line, point and error-bar series (undo captions)
inline constexpr char ErrorBarsDeltaXPlus[] = "Error bars X(+)-delta reference";
inline constexpr char ErrorBarsDeltaXMinus[] = "Error bars X(-)-delta reference";
inline constexpr char ErrorBarsDeltaYPlus[] = "Error bars Y(+)-delta reference";
inline constexpr char ErrorBarsDeltaYMinus[] = "Error bars Y(-)-delta reference";

// ---- Bars (undo captions and messages)
inline constexpr char BarsStyle[] = "Bars style";
inline constexpr char BarsHorizontal[] = "Bars horizontal";
inline constexpr char BarsDepth3D[] = "Bars 3D depth";
inline constexpr char BarsClassesDistance[] = "Bars distance of classes";
inline constexpr char BarsOverlayStyle[] = "Bars stacked/shifted overlays";
inline constexpr char BarsCaptions[] = "Bars captions";
inline constexpr char BarsLabelColor[] = "Labels color";
inline constexpr char BarsLabelFormat[] = "Labels output format";
inline constexpr char BarsLabelFrom[] = "Labels from list/values/percent";
inline constexpr char BarsLabelPosition[] = "Labels position";
inline constexpr char BarsLabelVertical[] = "Bars vertical labels";
inline constexpr char BarsLabelSize[] = "Label size";
inline constexpr char BarsFont[] = "Bars font";
inline constexpr char BarsCaptionsWithDatabase[] = "Setting captions list not allowed with database binding set";

// ---- Calculated curves: numerics (messages)
inline constexpr char MathNotEnoughPoints[] = "Not enough data points to calculate function";
inline constexpr char MathDimensionNegative[] = "The dimension of the matrix must be positive";
inline constexpr char MathTridiagonalTooSmall[] = "Not enough data, matrix is to small to solve";
inline constexpr char MathNotTridiagonal[] = "Matrix is not tridiagonal";
inline constexpr char SvdWrongMatrix[] = "SingularValueDecomposition: Matrix has wrong dimension";
inline constexpr char SvdWrongVector[] = "SingularValueDecomposition: Output vector has wrong dimension";
inline constexpr char SvdWrongOutputMatrix[] = "SingularValueDecomposition: Output matrix has wrong dimension";
inline constexpr char HouseholderWrongSize[] = "Householder Transformation: Matrix has wrong size";
inline constexpr char HouseholderRightSide[] = "Householder Transformation: Right side too small";
inline constexpr char HouseholderSolution[] = "Householder Transformation: Solution too small";
inline constexpr char HouseholderRankZero[] = "Householder Transformation: Rank is zero";
inline constexpr char HouseholderRankSmall[] = "Householder Transformation: Rank is too small";
inline constexpr char CholeskyNotSquare[] = "Cholesky Decomposition: Matrix is not square!";
inline constexpr char CholeskyFirstNotPositive[] = "Cholesky Decomposition ([0,0]): Matrix is not positive definite!";
inline constexpr char CholeskyNotPositive[] = "Cholesky Decomposition ([i,i]): Matrix is not positive definite!";
inline constexpr char CholeskyNotAtOrigin[] = "Cholesky Substitution: Matrix does not start [0,0]";
inline constexpr char CholeskyDataNotAtZero[] = "Cholesky Substitution: Data Array must start at 0!";

// ---- Calculated curves: the function series (undo captions, messages, published values)
inline constexpr char CalcNoXVector[] = "No X vector defined for calculation";
inline constexpr char CalcNoYVector[] = "No Y vector defined for calculation";
inline constexpr char FunctionFormulaNotOverridden[] = "Formula function of function series must be overridden in derived classes";
inline constexpr char FunctionWeight[] = "Function series weight";
inline constexpr char FunctionAutoStart[] = "Function series calculation start auto";
inline constexpr char FunctionAutoStop[] = "Function series calculation stop auto";
inline constexpr char FunctionCalculationStart[] = "Function series calculation start";
inline constexpr char FunctionCalculationStop[] = "Function series calculation stop";
inline constexpr char FunctionClipYValues[] = "Function series clip Y-values";
inline constexpr char FunctionDisplayAutoStart[] = "Function series display start auto";
inline constexpr char FunctionDisplayAutoStop[] = "Function series display stop auto";
inline constexpr char FunctionDisplayStart[] = "Function series display start";
inline constexpr char FunctionDisplayStop[] = "Function series display stop";
inline constexpr char FunctionCouple[] = "Function series couple calculation and display";
inline constexpr char FunctionVarFormula[] = "Formula used for calculation";
inline constexpr char FunctionVarCalculationStart[] = "Start value of range used for calculation";
inline constexpr char FunctionVarCalculationStop[] = "Stop value of range used for calculation";
inline constexpr char FunctionVarDisplayStart[] = "Start value of range used for display of line";
inline constexpr char FunctionVarDisplayStop[] = "Stop value of range used for display of line";

// ---- Calculated curves: moving average
inline constexpr char AverageMethod[] = "Moving average averaging method";
inline constexpr char AverageDirection[] = "Moving average averaging directions";
inline constexpr char AverageRangeMethod[] = "Moving average by count/diatance";
inline constexpr char AverageN[] = "Moving average N";
inline constexpr char AverageExponentialFactor[] = "Moving average exponential factor for N";
inline constexpr char AverageFormulaSimple[] = "Simple moving average (all values equally weighted)";
inline constexpr char AverageFormulaLinear[] = "Weight the values linear with the distance";
inline constexpr char AverageFormulaExponential[] = "Weight the values exponentially with the distance";
inline constexpr char AverageVarN[] = "Count/Distance of values used for averaging";
inline constexpr char AverageVarExponentialFactor[] = "Factor (<1) to multiply n±1 th value for exponential decay of weighting";

// ---- Calculated curves: interpolation, differential, integral
inline constexpr char InterpolationMethod[] = "Algorithm used for interpolation";
inline constexpr char InterpolationSmoothPoints[] = "Smoothing ON/OFF";
inline constexpr char InterpolationSmoothingRange[] = "Smoothing range";
inline constexpr char InterpolationElasticity[] = "Elasticity of approximative spline";
inline constexpr char InterpolationNoSmoothing[] = "Approximative spline does not need the smoothing function!\rUse the ElasticityFactor to adjust the elasticity of the spline.";
inline constexpr char InterpolationFormulaAkima[] = "Interpolation (Akima)";
inline constexpr char InterpolationFormulaCubic[] = "Interpolation (cubic spline)";
inline constexpr char InterpolationFormulaApproximative[] = "Interpolation (approximative spline)";
inline constexpr char DifferentialFormulaAkima[] = "Differential (Akima)";
inline constexpr char DifferentialFormulaCubic[] = "Differential (cubic spline)";
inline constexpr char DifferentialFormulaApproximative[] = "Differential (approximative spline)";
inline constexpr char IntegralFormulaAkima[] = "Integral (Akima)";
inline constexpr char IntegralFormulaCubic[] = "Integral (cubic spline)";
inline constexpr char IntegralFormulaApproximative[] = "Integral (approximative spline)";
inline constexpr char InterpolationVarSmoothingRange[] = "Factor to control smoothness with Akima and cubic spline";
inline constexpr char InterpolationVarElasticity[] = "Factor to control the elasticity of the approximative spline line";
inline constexpr char InterpolationVarMaxima[] = "Local maxima of interpolated function";
inline constexpr char InterpolationVarMinima[] = "Local minima of interpolated function";
inline constexpr char DifferentialNoSecondAxis[] = "Graph has no secondary axis.\rDo You want to create one?";
inline constexpr char DifferentialAxisCaption[] = "2nd Y-Axis";
// ---- Calculated curves: fitted line and linear regression
inline constexpr char FitNeedsX[] = "Expression must contain the independent variable X!";
inline constexpr char FitNeedsVariable[] = "Expression must contain a variable a..p!";
inline constexpr char FitNoFunction[] = "No FittingFunction or Expression defined";
inline constexpr char FitNoOrder[] = "SimplexFit: no order set!";
inline constexpr char FitNoIterations[] = "SimplexFit: no iterations set!"; // stands in the table, never raised
inline constexpr char FitCovarianceIndefinite[] = "SimplexFit: DoCovariance, reciprocal indefinite!";
inline constexpr char FitCovarianceTooFew[] = "Not enough data points to interpolate covariance";
inline constexpr char FitIndexOutOfRange[] = "Fitted line: Index of variable out of range";
inline constexpr char FitCoefficients[] = "Fitted line coefficients";
inline constexpr char FitIterations[] = "Fitted line iterations";
inline constexpr char FitExpression[] = "Fitted line expression";
inline constexpr char FitDoCovariance[] = "Fitting using covariance/variance";
inline constexpr char FitVarX[] = "X-Value";
inline constexpr char FitVarLetter[] = "Variable "; // followed by the letter in lower case
inline constexpr char FitVarAverageX[] = "Mean of X values";
inline constexpr char FitVarAverageY[] = "Mean of Y values";
inline constexpr char FitVarVarianceX[] = "Variance of X values";
inline constexpr char FitVarVarianceY[] = "Variance of Y values";
inline constexpr char FitVarProbability[] = "Probability of the fitted line";
inline constexpr char FitVarSumOfResiduals[] = "Sum of squared deviations of data points to fitted line";
inline constexpr char FitVarCoefficients[] = "Coefficients of the general linear least square";
inline constexpr char RegressionFixedOffset[] = "Linear regression fixed offset";
inline constexpr char RegressionOffset[] = "Linear regression offset";
inline constexpr char RegressionOffsetNeedsFixed[] = "The offset should only be set with fixed offset\rDou You want to set it to True?";
inline constexpr char RegressionLogX[] = "Log X-Axis with regression and LogToNormalScalingLevel>0 not possible\rSetting to 0";
inline constexpr char RegressionLogY[] = "Log Y-Axis with regression and LogToNormalScalingLevel>0 not possible\rSetting to 0";
inline constexpr char RegressionFormulaLogY[] = "lg(Y)=a+b(";
inline constexpr char RegressionFormulaY[] = "Y=a+b(";
inline constexpr char RegressionFormulaLogX[] = "lg(X))";
inline constexpr char RegressionFormulaX[] = "X)";
inline constexpr char RegressionVarOffset[] = "The offset a of the regression line Y=a+mX";
inline constexpr char RegressionVarSlope[] = "The slope m of the regression line Y=a+mX";
inline constexpr char RegressionVarDeltaSlope[] = "Statistical error of slope m of the regression line Y=a+mX";
inline constexpr char RegressionVarDeltaOffset[] = "Statistical error of offset a of the regression line Y=a+mX";
inline constexpr char RegressionVarCorrelation[] = "Correlation coefficient";

// ---- Calculated curves: least squares over basis functions, polynomial, Fourier spectrum
inline constexpr char LsqOrder[] = "General linear least squares order";
inline constexpr char LsqIndexOutOfRange[] = "General Linear Least Squares: Index of variable out of range";
inline constexpr char LsqNoBasisFunction[] = "No BasisFunction defined";
inline constexpr char LsqVarQRel[] = "Relative error of coefficients";
inline constexpr char LsqVarDeltaCoefficients[] = "Standard deviation of coefficients of the general linear least square";
} // namespace QyRes

// The text of a table entry (the translation hook).
QString QyText(const char* id);

// Formats a message of the table the way the runtime's Format does for the directives the table
// uses: %d %s %g %f %e %x with optional width and precision, and %%.
QString QyFormatMessage(const char* id, std::initializer_list<QVariant> args);
