// The ports for the watcher of the open file and for long work.
#pragma once

namespace kelvane {

// The timer timDetectChange, 250 milliseconds. Both calls may come twice in a row.
class Watch {
 public:
  virtual ~Watch() = default;
  virtual void Start() = 0;
  virtual void Stop() = 0;
};

// How far a long command is: `done` of `total` steps, from 0 of n to n of n.
class Progress {
 public:
  virtual ~Progress() = default;
  virtual void Show(int done, int total) = 0;
};

}  // namespace kelvane
