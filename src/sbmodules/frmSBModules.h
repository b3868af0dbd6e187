#pragma once

#include "editor/RecordWindow.h"
#include "sbmodules/ModuleIDPool.h"

#include <memory>

namespace Ui {
class frmSBModules;
}

namespace velmora {

/// The starbase module viewer. Nothing can be changed in it; of its menus only Exit does something.
class frmSBModules : public RecordWindow {
    Q_OBJECT

  public:
    explicit frmSBModules(QWidget* parent = nullptr);
    ~frmSBModules() override;

  protected:
    void LoadForm() override;
    [[nodiscard]] LoadRequest Request() const override;
    void BeginLoad() override { ids.Fill(); }
    void ReleaseRecords() override { ids.Fill(); }
    void ShowRecord(const Record* record) override;
    [[nodiscard]] std::string UnwrittenQuestion() const override;

  private:
    std::unique_ptr<Ui::frmSBModules> ui;
    ModuleIDPool ids;
};

} // namespace velmora
