#include "QyGallery.h"
#include <QLabel>

QY_GALLERY_PAGE(placeholder, "00-welcome", "Welcome", [] {
  auto* l = new QLabel("QyCharts gallery");
  l->setAlignment(Qt::AlignCenter);
  return static_cast<QWidget*>(l);
});
