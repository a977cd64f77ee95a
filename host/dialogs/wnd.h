#pragma once

#include "host/export.h"
#include "host/text/basic_string.h"

/// A window: something that a dialog can be shown in front of.
class HOST_API CWnd {
 public:
  explicit CWnd(CWnd* parent = nullptr) : parent_(parent) {}
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;
  virtual ~CWnd();

  /// The window in front of which this one is shown, null for none. Not owned.
  CWnd* GetParent() const { return parent_; }

  const XCBasicString& GetWindowText() const { return title_; }
  virtual void SetWindowText(std::u16string_view title) { title_ = title; }

 private:
  CWnd* parent_;
  XCBasicString title_;
};
