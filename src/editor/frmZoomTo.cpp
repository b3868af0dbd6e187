#include "editor/frmZoomTo.h"

#include "editor/ChoiceBox.h"
#include "editor/QtText.h"
#include "services/Catalogues.h"
#include "services/modWriter.h"
#include "ui_frmZoomTo.h"

namespace velmora {

frmZoomTo::frmZoomTo(const Library& zoomedLibrary, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmZoomTo>()), library(zoomedLibrary) {
    ui->setupUi(this);
    connect(ui->cboZoomTo, &QComboBox::currentIndexChanged, this, [this] { ShowBlurb(); });
    connect(ui->cmdGo, &QPushButton::clicked, this, [this] { Go(); });
}

frmZoomTo::~frmZoomTo() = default;

std::int32_t frmZoomTo::ZoomTo(const std::string& title, Mode mode, const std::string& name) {
    setWindowTitle(ToQt(title));
    ZoomMode = mode;
    SetCurrentName(name);
    exec();
    return ZoomResult;
}

void frmZoomTo::SetCurrentName(const std::string& name) {
    currentName = name;
    std::vector<std::string> names;
    std::size_t selected = 0;
    if (ByFile()) {
        for (const auto& [file, position] : library.FileList())
            names.push_back(file);
        selected = PositionByNumber(library.FileList(), 0);
    } else {
        names = library.Names();
        if (library.Exists(name))
            selected = library.IndexOf(name);
    }
    ui->cboZoomTo->SetEntries(std::move(names), static_cast<int>(selected));
    ShowBlurb();
}

void frmZoomTo::ShowBlurb() {
    const std::string chosen = ui->cboZoomTo->Chosen();
    if (ByFile()) {
        const std::string intro = ZoomMode == EventFiles ? "Events" : "UP Issues";
        ui->lblBlurb->setText(
            ToQt(intro + " contained in this file:\n" + Join(library.NamesInFile(chosen), ", ")));
    } else if (const Record* record = library.Find(chosen)) {
        ui->lblBlurb->setText(ToQt(library.Kind.BlurbOf(*record)));
    }
}

void frmZoomTo::Go() {
    ui->cboZoomTo->EndSearch();
    const std::string chosen = ui->cboZoomTo->Chosen();
    const std::size_t found = ByFile() ? library.FirstInFile(chosen) : library.IndexOf(chosen);
    if (found != Library::None)
        ZoomResult = library.Kind.NumberOf(library.At(found)) - 1;
    hide();
}

} // namespace velmora
