// The timer timDetectChange.
#pragma once

#include <QTimer>

#include "common/Watch.h"

namespace kelvane {

class QtWatch : public QTimer, public Watch {
 public:
  static constexpr int kInterval = 250;  // milliseconds

  explicit QtWatch(QObject* parent) : QTimer(parent) {
    setObjectName("timDetectChange");
    setInterval(kInterval);
  }

  void Start() override { start(); }
  void Stop() override { stop(); }
};

}  // namespace kelvane
