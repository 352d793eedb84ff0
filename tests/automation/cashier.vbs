' A cashier at a till of the examples: a withdrawal that is refused, a smaller one, the day on paper.
Sub Withdraw()
  WScript.Touch 0.065, 0.76 ' euro
  WScript.Touch 0.263, 0.19 ' in cash
  WScript.Touch 0.043, 0.555 ' 1250
  WScript.Touch 0.115, 0.555
  WScript.Touch 0.115, 0.467
  WScript.Touch 0.043, 0.643
  WScript.Touch 0.561, 0.195
  WScript.When 1, "Confirm"
End Sub

Sub Confirm()
  WScript.Touch 0.813, 0.945
  WScript.When 1, "WithdrawLess"
End Sub

Sub WithdrawLess()
  WScript.Touch 0.186, 0.643 ' clears the amount
  WScript.Touch 0.115, 0.467 ' 50
  WScript.Touch 0.043, 0.643
  WScript.Touch 0.813, 0.945
  WScript.When 1, "ListDay"
End Sub

Sub ListDay()
  WScript.Touch 0.27, 0.035
  WScript.When 1, "PrintDay"
End Sub

Sub PrintDay()
  WScript.Touch 0.703, 0.932
  WScript.Touch 0.822, 0.932
  WScript.When 1, "Leave"
End Sub

Sub Leave()
  WScript.Press 27
  WScript.When 0, "Gone"
End Sub

Sub Gone()
End Sub

WScript.When 1, "Withdraw"
