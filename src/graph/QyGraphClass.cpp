// The graph can be made by class name (documents, undo).
#include "QyClassRegistry.h"
#include "QyGraph2D.h"

QY_REGISTER_CLASS(TQyGraph2D);
