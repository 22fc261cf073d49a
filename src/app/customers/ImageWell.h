#pragma once

#include <QFrame>
#include <QImage>

// A sunken well that shows a picture scaled to fit, or a hint while it has none, and takes a
// picture dropped on it (image data or an image file).
class ImageWell : public QFrame {
    Q_OBJECT

public:
    explicit ImageWell(QWidget *parent = nullptr);

    QImage image() const { return m_image; }
    void setImage(const QImage &image);
    void setPlaceholderText(const QString &text);

    QSize sizeHint() const override;

signals:
    // A picture was dropped; the well already shows it.
    void imageDropped(const QImage &image);

protected:
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QImage m_image;
    QString m_placeholder;
    bool m_highlighted = false;
};
