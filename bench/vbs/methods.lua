-- Method calls and properties of a class.
local rounds = tonumber(arg[1] or 80)

local Account = {}
Account.__index = Account

function Account.new() return setmetatable({ _balance = 0, _moves = 0 }, Account) end
function Account:balance() return self._balance end
function Account:set_balance(value)
  self._balance = value
  self._moves = self._moves + 1
end
function Account:moves() return self._moves end
function Account:deposit(amount)
  self._balance = self._balance + amount
  self._moves = self._moves + 1
end
function Account:can_pay(amount) return self._balance >= amount end

local function work(account, n)
  for i = 1, n do
    account:deposit(i % 10)
    if account:can_pay(1000) then account:set_balance(account:balance() - 1000) end
  end
end

local account = Account.new()
for _ = 1, rounds do
  work(account, 100000)
end
print(account:balance() .. " " .. account:moves())
