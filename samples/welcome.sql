select c.CompanyName, c.City, c.Country, count(*) as Orders, max(o.PlacedAt) as LastOrder, c.CreditLimit
from customers c join orders o on o.CustomerID = c.CustomerID
group by c.CustomerID
order by Orders desc
