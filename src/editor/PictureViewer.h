#pragma once

#include <QImage>
#include <QWidget>
#include <string>

namespace velmora {

/// Shows a picture of the game, scaled to the room there is. While it has none to show, the label
/// `lblUnableToDisplay` beside it, if there is one, tells so in its place.
class PictureViewer : public QWidget {
    Q_OBJECT

  public:
    explicit PictureViewer(QWidget* parent = nullptr);

    /// Shows the picture of a file. A missing or broken file is no failure: it shows none.
    void ShowFile(const std::string& path);
    [[nodiscard]] bool HasPicture() const { return !picture.isNull(); }

    [[nodiscard]] QSize sizeHint() const override { return {240, 180}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 90}; }

  signals:
    /// Told for every file, whether its picture is on show.
    void Displayed(bool shown);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage picture;
};

} // namespace velmora
