#pragma once

#include <QObject>

namespace velmora {

struct Binding;
class RecordWindow;

/// A line below each text of a form that has a recommended length, which tells how long it is by the count
/// that the checks make. What is too long is marked in the box.
class LengthMeters : public QObject {
    Q_OBJECT

  public:
    /// To be made once the form's fields are bound.
    explicit LengthMeters(RecordWindow& window);

  private:
    template <class Box>
    void Add(Box* box, const Binding& binding);

    int count = 0;
};

} // namespace velmora
