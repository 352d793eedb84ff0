#pragma once
#include "automation/event_source.h"
#include "automation/failure.h"
#include "automation/server_module.h"
#include "com/com_headers.h"
#include "component/cls_Kova_Drawer_Man.h"

#include "kova_drawer_man_automation.h"

#include <atomic>
#include <memory>

namespace kova::automation {

/// One component as automation hosts hold it. The function table and `Invoke` reach the same component; it
/// lives in the apartment that made it, and answers RPC_E_WRONG_THREAD on any other thread. No exception
/// leaves it: callers through the table find a failure's text in the thread's error object, callers of
/// `Invoke` in EXCEPINFO.
class ComponentObject final : public _cls_Kova_Drawer_Man,
                              public IConnectionPointContainer,
                              public IProvideClassInfo2,
                              public ISupportErrorInfo {
  public:
    /// Shares the component with whoever made it.
    static com::Pointer<ComponentObject> create(std::shared_ptr<cls_Kova_Drawer_Man> component);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD kinds,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* details,
                                     UINT* wrong) override;

    HRESULT STDMETHODCALLTYPE Stampa(BSTR* DataOP) override;
    HRESULT STDMETHODCALLTYPE SalvaPagamento(LONG* idpagamento, double* importo, BSTR* Valuta, BSTR* note,
                                             short* cassetto, LONG* tipoIncasso,
                                             VARIANT_BOOL* isIncasso) override;
    HRESULT STDMETHODCALLTYPE Show(LONG* method, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Inizializza(_Connection** ConnessioneDB) override;
    HRESULT STDMETHODCALLTYPE Anteprima(BSTR* DataOP) override;
    HRESULT STDMETHODCALLTYPE SetSoftwareName(BSTR* SwName) override;
    HRESULT STDMETHODCALLTYPE put_ActiveColorMetroStyle(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE put_AttivaVisualizzazionePrecontiDefinitivi(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE put_idCassa(LONG* value) override;
    HRESULT STDMETHODCALLTYPE ApriCassetto() override;
    HRESULT STDMETHODCALLTYPE get_AttivaVisualizzazionePrecontiDefinitivi(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_idCassa(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_ChiusuraAutomatica(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE get_ChiusuraAutomatica(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_InserimentoAutomatico(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE get_InserimentoAutomatico(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_idPagamentoPredefinito(LONG* value) override;
    HRESULT STDMETHODCALLTYPE get_idPagamentoPredefinito(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_idUtente(LONG* value) override;
    HRESULT STDMETHODCALLTYPE get_idUtente(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_UsaSoloValutaAziendale(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE get_UsaSoloValutaAziendale(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_ValutaAziendale(BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_ValutaAziendale(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_VisualizzaMovimentiUtenteLoggato(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE get_VisualizzaMovimentiUtenteLoggato(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_DoppioInserimentoObbligatorio(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE get_DoppioInserimentoObbligatorio(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE DiscardForm() override;
    HRESULT STDMETHODCALLTYPE put_AttivaRecuperaFondoCassaPrecedente(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE put_PredisponiInserimentoFondoCassaIniziale(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE InizializzaByConnString(BSTR* locConnString) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;

  private:
    explicit ComponentObject(std::shared_ptr<cls_Kova_Drawer_Man> component);
    ~ComponentObject() = default;
    /// A call through the function table; the arguments may not be null.
    template <class Body, class... Pointers>
    HRESULT call(const Body& body, Pointers*... arguments);
    HRESULT readNumber(std::int32_t (cls_Kova_Drawer_Man::*read)() const, LONG* result);
    HRESULT writeNumber(void (cls_Kova_Drawer_Man::*write)(const std::int32_t&), const LONG* value);
    HRESULT readFlag(bool (cls_Kova_Drawer_Man::*read)() const, VARIANT_BOOL* result);
    HRESULT writeFlag(void (cls_Kova_Drawer_Man::*write)(const bool&), const VARIANT_BOOL* value);
    HRESULT writeText(void (cls_Kova_Drawer_Man::*write)(const std::string&), BSTR* value);
    HRESULT raiseText(void (cls_Kova_Drawer_Man::*raise)(std::string&), BSTR* text);

    const HeldByHost held_;
    const DWORD thread_ = GetCurrentThreadId();
    const std::shared_ptr<cls_Kova_Drawer_Man> component_;
    EventSource events_;
    std::atomic<ULONG> references_ = 1;
};

} // namespace kova::automation
