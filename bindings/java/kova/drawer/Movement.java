package kova.drawer;

import java.util.Objects;

/** One movement of the cash drawer, by reference: what a handler sets reaches the handlers connected later and the
 *  dialog. */
public final class Movement {
    private int idpagamento;
    private double importo;
    private String valuta = "";
    private String note = "";
    private short cassetto;
    private int tipoIncasso;
    private boolean isIncasso;

    /** The payment. */
    public int getIdpagamento() {
        return idpagamento;
    }

    public void setIdpagamento(int idpagamento) {
        this.idpagamento = idpagamento;
    }

    /** In units of the currency, as typed: not signed by direction. */
    public double getImporto() {
        return importo;
    }

    public void setImporto(double importo) {
        this.importo = importo;
    }

    /** The currency. What a handler sets stays selected. */
    public String getValuta() {
        return valuta;
    }

    public void setValuta(String valuta) {
        this.valuta = Objects.requireNonNull(valuta);
    }

    public String getNote() {
        return note;
    }

    public void setNote(String note) {
        this.note = Objects.requireNonNull(note);
    }

    /** The drawer [0-4], 0 for none chosen. */
    public short getCassetto() {
        return cassetto;
    }

    public void setCassetto(int cassetto) {
        if (cassetto != (short) cassetto)
            throw new IllegalArgumentException("No such drawer: " + cassetto);
        this.cassetto = (short) cassetto;
    }

    /** The activity's id. */
    public int getTipoIncasso() {
        return tipoIncasso;
    }

    public void setTipoIncasso(int tipoIncasso) {
        this.tipoIncasso = tipoIncasso;
    }

    /** Whether the money enters the drawer. */
    public boolean isIncasso() {
        return isIncasso;
    }

    public void setIncasso(boolean isIncasso) {
        this.isIncasso = isIncasso;
    }
}
