#pragma once

#include <QDialog>
#include <QStringList>

class QLineEdit;

// "添加工种": a new trade name, blanks removed, refused when it exists.
class TLxrgwh_Gzwh_Add : public QDialog
{
    Q_OBJECT
public:
    TLxrgwh_Gzwh_Add(const QStringList& existing, QWidget* parent = nullptr);
    QLineEdit* edit() const { return m_edit; }
    QString name() const { return m_name; }

signals:
    void closeLxrgwh();

public slots:
    void onOk();

protected:
    // The name as entered, for the subclasses' results.
    bool takeName();
    QStringList m_existing;
    QLineEdit* m_edit;
    QString m_name;
};
