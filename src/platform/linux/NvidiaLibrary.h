#pragma once

#include <QByteArray>
#include <QLibrary>
#include <QString>

#include <optional>

namespace tarnwick {

/// NVIDIA's management library as the driver installs it, found at run time; without it there is no reading. An open
/// session keeps the devices' files open, so close it when their power may go. Not thread-safe.
class NvidiaLibrary {
public:
    explicit NvidiaLibrary(const QString& fileName);
    ~NvidiaLibrary();
    Q_DISABLE_COPY_MOVE(NvidiaLibrary)

    [[nodiscard]] static QString installedName() { return QStringLiteral("libnvidia-ml.so.1"); }

    /// Percent of the last sample period in which the card at the PCI address ("0000:01:00.0") was busy. Begins a
    /// session where none is open.
    [[nodiscard]] std::optional<unsigned> utilisation(const QByteArray& pciAddress);
    /// Ends the session.
    void close();

private:
    [[nodiscard]] bool open();

    QLibrary library_;
    bool isOpen_ = false;
};

} // namespace tarnwick
